#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

using namespace SQLiteFiles;
using ZELWbr3::SQLite::FileId;
using ZELWbr3::SQLite::OpenFiles;
namespace fs = std::filesystem;

namespace {

constexpr char kOnline[] = "5 Online connected available";

/// "status text connected available": the state in one line.
std::string State(ZELLib3::Database& oDatabase) {
  const auto oState = oDatabase.StateInfo();
  return std::to_string(oState->Status()) + " " + oState->StateText() + (oDatabase.Connected() ? " connected" : "") +
         (oState->InfoAvailable() ? " available" : "");
}

/// The state, or why the file cannot be opened.
std::string Opened(const std::string& sPath) {
  try {
    return State(*OpenDatabase(sPath));
  } catch (const ZELLib3::InstanceError& oError) {
    EXPECT_NE(0, oError.ErrorObject().ErrorCode);
    return oError.what();
  }
}

class SQLiteState : public SQLiteTest {
 protected:
  std::string State() { return ::State(*m_oDatabase); }
};

class SQLiteStateInMode : public SQLiteTestWith {
 protected:
  std::string State() { return ::State(*m_oDatabase); }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(, SQLiteStateInMode, testing::Values("PRAGMA journal_mode=DELETE", "PRAGMA journal_mode=WAL"));

TEST_F(SQLiteState, BadFilesAreNamedAndNothingIsMade) {
  fs::create_directory(Path("folder.db"));
  mkfifo(Path("pipe.db").c_str(), 0666);
  WriteFile(Path("text.db"), std::string(5000, 'x'));
  std::string sHeader(4096, '\0');
  sHeader.replace(0, 15, "SQLite format 3");
  for (const auto& [sName, cPageSize] : {std::pair("zeros.db", 16), {"size.db", 3}}) {
    sHeader[16] = static_cast<char>(cPageSize);
    WriteFile(Path(sName), sHeader);
  }
  const auto before = Names(Path(""));
  for (const auto& [sName, sWrong] :
       {std::pair("missing.db", "no such file"),
        {"folder.db", "is a folder, not a database file"},
        {"pipe.db", "is not a regular file"},
        {"text.db", "is not a SQLite database, or it is encrypted"},
        {"size.db", "has a damaged header: page size 768"},
        {"zeros.db", "reading the page count: file is not a database, or it is encrypted"},
        {"file:a.db?mode=rwc", "no such file"}}) {
    EXPECT_EQ(Path(sName) + ": " + sWrong, Opened(Path(sName)));
  }
  for (const auto& [sPath, sWrong] : {std::pair(std::string(), "no file name given"),
                                      {std::string("a\0b", 3), "NUL"},
                                      {":memory:", "no such file"},
                                      {Path("line\nbreak"), "line break: no such file"}}) {
    EXPECT_NE(std::string::npos, Opened(sPath).find(sWrong)) << Opened(sPath);
  }
  EXPECT_EQ(before, Names(Path("")));

  Run("CREATE TABLE t(v)");
  chmod(Path().c_str(), 0000);
  EXPECT_EQ(Path() + ": Permission denied", AsOrdinaryUser([&] { return Opened(Path()); }));
}

TEST_F(SQLiteState, DamageDoneLaterIsToldAndNotShownAsFigures) {
  const auto Write = [&](int iOffset, const std::string& sBytes) {
    std::fstream(Path(), std::ios::in | std::ios::out | std::ios::binary).seekp(iOffset) << sBytes;
  };
  Run("CREATE TABLE t(v)");
  Open().Shutdown();
  Write(21, "\xff\xff\xff");
  EXPECT_FALSE(m_oDatabase->Online());
  EXPECT_EQ(Path() + ": reading the page count: file is not a database, or it is encrypted", Error());
  EXPECT_EQ("2 Offline connected", State());
  Write(21, "@  ");  // as it was
  EXPECT_TRUE(m_oDatabase->Online());
  Write(24, std::string(4, '\xff'));  // the change counter, so that nothing cached is used
  Write(100, "\xff");                 // the kind of the schema's first page
  EXPECT_THROW(m_oDatabase->StateInfo()->AutoUpdateStatistics(), ZELLib3::InstanceError);
  Write(0, std::string(100, '\xff'));
  EXPECT_EQ("0 Not connected", State());
  EXPECT_EQ(Path() + ": is not a SQLite database, or it is encrypted", Error());
}

TEST_P(SQLiteStateInMode, AFileThatMayNotBeWrittenIsRead) {
  Run("CREATE TABLE t(v)");
  m_oApplication.reset();
  chmod(Path().c_str(), 0444);
  const auto before = m_oFolder.Contents();
  EXPECT_EQ("2 pages, " + std::string(kOnline) + "; admin refused", AsOrdinaryUser([&] {
              const bool bAdmin = Open().Admin();
              return std::to_string(m_oDatabase->StateInfo()->DataTotal()) + " pages, " + State() +
                     (bAdmin ? "" : "; admin refused");
            }));
  EXPECT_EQ(before, m_oFolder.Contents());
}

TEST_F(SQLiteState, TheLogOfAFileThatMayNotBeWrittenIsShared) {
  Run("PRAGMA journal_mode=WAL; CREATE TABLE t(v)");
  InsertRows(App(), 1);
  EXPECT_EQ(App().Text("PRAGMA page_count") + " 1", AsOrdinaryUser([&] {
              const auto oState = Open().StateInfo();
              return std::to_string(oState->DataTotal()) + " " + std::to_string(oState->LogUsed() > 0);
            }));
  // Figures that left the log out would be wrong ones.
  Folder oCopy;
  for (const std::string sName : {"a.db", "a.db-wal"}) fs::copy(Path(sName), oCopy / sName);
  chmod(oCopy.Path().c_str(), 0555);
  const std::string sError = AsOrdinaryUser([&] { return Opened(oCopy / "a.db"); });
  EXPECT_NE(std::string::npos, sError.find("write-ahead log cannot be read without write access")) << sError;
}

TEST_F(SQLiteState, AnUnwritableFileIsReadAfreshWhenItsOwnerChangesIt) {
  { Application(Path(), "PRAGMA journal_mode=WAL; CREATE TABLE t(v)"); }
  Servant oReader([&](const std::string&) {
    if (!m_oDatabase && geteuid() == 0 && setuid(65534) != 0) return std::string("cannot change user");
    if (!m_oDatabase) Open();
    const auto oState = m_oDatabase->StateInfo();
    return std::to_string(oState->DataTotal()) + (oState->LogUsed() > 0 ? "+log" : "");
  });
  EXPECT_EQ("2", oReader.Ask("look"));
  InsertRows(App(), 20);
  const std::string sPages = App().Text("PRAGMA page_count");
  EXPECT_EQ(sPages + "+log", oReader.Ask("look"));
  m_oApplication.reset();
  EXPECT_EQ(sPages + "+log", oReader.Ask("look"));
}

TEST_F(SQLiteState, OfflineClosesTheFile) {
  Run("CREATE TABLE t(v)");
  m_oApplication.reset();
  const auto oFile = FileId::Of(Path()).value();
  Open();
  for (const bool bQuick : {false, true}) {
    EXPECT_EQ(kOnline, State());
    EXPECT_EQ(1, OpenFiles::Processes(oFile));
    const auto oKept = m_oDatabase->StateInfo();
    EXPECT_TRUE(bQuick ? m_oDatabase->ShutdownQuick() : m_oDatabase->Shutdown());
    EXPECT_EQ("2 Offline connected", State());
    EXPECT_EQ(0, OpenFiles::Processes(oFile));
    EXPECT_EQ("Offline", oKept->StateText()) << "read late, it tells what is so by then";
    EXPECT_TRUE(m_oDatabase->Online());
    EXPECT_GT(m_oDatabase->StateInfo()->StartOn().Year, 2000);
  }
}

TEST_P(SQLiteStateInMode, AdminLocksOthersOut) {
  Run("CREATE TABLE t(v)");
  Open({.BusyTimeout = std::chrono::milliseconds(1)});
  Run("BEGIN; SELECT * FROM t");
  EXPECT_FALSE(m_oDatabase->Admin());
  EXPECT_EQ(5, m_oDatabase->LastError().ErrorCode & 0xff);
  EXPECT_EQ(Path() + ": locking other connections out: database is locked", Error());
  EXPECT_EQ(kOnline, State()) << "a change that failed changes nothing";
  m_oApplication.reset();

  EXPECT_TRUE(m_oDatabase->Admin()) << Error();
  EXPECT_EQ("3 Admin connected", State());
  EXPECT_EQ(SQLITE_BUSY, Application(Path()).Try("SELECT * FROM t"));
  EXPECT_TRUE(m_oDatabase->Online());
  EXPECT_EQ(SQLITE_OK, App().Try("INSERT INTO t VALUES(1)"));
}

TEST_F(SQLiteState, ALockedFileIsOnlineWithoutFigures) {
  Run("CREATE TABLE t(v); BEGIN EXCLUSIVE");
  Open({.BusyTimeout = std::chrono::milliseconds(1)});
  EXPECT_EQ("5 Online (locked by another connection) connected", State());
  EXPECT_FALSE(m_oDatabase->StateInfo()->DataFull());
  EXPECT_EQ(0, m_oDatabase->LogSettings()->AutoOverwrite());
  EXPECT_EQ(0, m_oDatabase->StateInfo()->AutoUpdateStatistics());
  Run("COMMIT");
  EXPECT_EQ(kOnline, State());
  Run("BEGIN IMMEDIATE; INSERT INTO t VALUES(1)");
  EXPECT_EQ(kOnline, State()) << "a writer before its commit is in nobody's way";
}

TEST_P(SQLiteStateInMode, AVanishedFileIsNotConnectedUntilItIsBack) {
  Run("CREATE TABLE t(v)");
  m_oApplication.reset();
  Open();
  fs::remove(Path());
  EXPECT_EQ("0 Not connected", State());
  EXPECT_EQ(Path() + ": no such file", Error());
  EXPECT_FALSE(m_oDatabase->Online());
  EXPECT_FALSE(fs::exists(Path()));
  EXPECT_TRUE(m_oDatabase->Shutdown());
  EXPECT_EQ("0 Not connected", State());
  m_oDatabase->Online();
  InsertRows(App(), 30);
  EXPECT_TRUE(m_oDatabase->Online()) << Error();
  EXPECT_EQ(Number("PRAGMA page_count"), m_oDatabase->StateInfo()->DataTotal());

  // Replaced in one step, as a backup that is copied back is.
  { Application(Path("b.db"), "PRAGMA page_size=1024; CREATE TABLE t(v)"); }
  fs::rename(Path("b.db"), Path());
  EXPECT_EQ(2, m_oDatabase->StateInfo()->DataTotal());
  EXPECT_EQ(1024, m_oDatabase->PageSize());
}

TEST_F(SQLiteState, WhatACrashLeftIsRolledBackByOnlineOnly) {
  InsertRows(App(), 100);
  EXPECT_EQ("", Process([&] {
                  Application oCrashing(Path(), "PRAGMA cache_size=5; BEGIN; UPDATE t SET v = zeroblob(900)");
                  _exit(0);
                  return std::string("alive");
                }).Result());
  const auto crashed = m_oFolder.Contents();
  ASSERT_TRUE(crashed.count("a.db-journal"));
  Open();
  EXPECT_EQ("2 Offline (recovery needed) connected", State());
  EXPECT_EQ(crashed, m_oFolder.Contents());
  EXPECT_TRUE(m_oDatabase->Online()) << Error();
  EXPECT_EQ(kOnline, State());
  EXPECT_FALSE(fs::exists(Path("a.db-journal")));
  EXPECT_EQ(100, Number("SELECT count(*) FROM t WHERE length(v) = 1000"));
}

TEST_F(SQLiteState, OperationsThatAFileDoesNotHaveAreRefused) {
  Run("CREATE TABLE t(v)");
  Open();
  EXPECT_FALSE(m_oDatabase->StateInfo()->AutoLog()) << "it would have to be turned off before each shutdown";
  EXPECT_FALSE(m_oDatabase->RestartUntil({2024, 1, 1, 0, 0, 0}));
  ExpectError("point in time");
  EXPECT_FALSE(m_oDatabase->AutoLogOff());
  ExpectError("log backup");
  EXPECT_EQ(kOnline, State());
}
