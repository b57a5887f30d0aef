#include "host/OutputFiles.h"
#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

using namespace SQLiteFiles;
namespace fs = std::filesystem;

namespace {

constexpr char kOnline[] = "5 Online connected available";

/// "status text connected available": the state in one line.
std::string StateOf(ZELLib3::Database& oDatabase) {
  const auto oState = oDatabase.StateInfo();
  return std::to_string(oState->Status()) + " " + oState->StateText() + (oDatabase.Connected() ? " connected" : "") +
         (oState->InfoAvailable() ? " available" : "");
}

/// The state, or why the file cannot be opened.
std::string Opened(const std::string& sPath) {
  try {
    return StateOf(*OpenDatabase(sPath));
  } catch (const ZELLib3::InstanceError& oError) {
    EXPECT_NE(0, oError.ErrorObject().ErrorCode);
    return oError.what();
  }
}

class SQLiteState : public SQLiteTest {};
class SQLiteStateInMode : public SQLiteTestWith {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(, SQLiteStateInMode,
                         testing::Values("PRAGMA journal_mode=DELETE; CREATE TABLE t(v)",
                                         "PRAGMA journal_mode=WAL; CREATE TABLE t(v)"));

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
  for (const auto& [sPath, sWrong] :
       {std::pair(Path("missing.db"), "missing.db: no such file"),
        {Path("folder.db"), "folder.db: is a folder, not a database file"},
        {Path("pipe.db"), "pipe.db: is not a regular file"},
        {Path("text.db"), "text.db: is not a SQLite database, or it is encrypted"},
        {Path("size.db"), "size.db: has a damaged header: page size 768"},
        {Path("zeros.db"), "zeros.db: reading the page count: file is not a database, or it is encrypted"},
        {Path("file:a.db?mode=rwc"), "file:a.db?mode=rwc: no such file"},
        {Path("line\nbreak"), "line break: no such file"},
        {std::string(), "no file name given"},
        {std::string("a\0b", 3), "NUL"},
        {":memory:", ":memory:: no such file"}}) {
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
  EXPECT_EQ("2 Offline connected", StateOf(*m_oDatabase));
  Write(21, "@  ");  // as it was
  EXPECT_TRUE(m_oDatabase->Online());
  Write(24, std::string(4, '\xff'));  // the change counter, so that nothing cached is used
  Write(100, "\xff");                 // the kind of the schema's first page
  EXPECT_THROW(State()->AutoUpdateStatistics(), ZELLib3::InstanceError);
  Write(0, std::string(100, '\xff'));
  EXPECT_EQ("0 Not connected", StateOf(*m_oDatabase));
  EXPECT_EQ(Path() + ": is not a SQLite database, or it is encrypted", Error());
}

TEST_P(SQLiteStateInMode, AFileThatMayNotBeWrittenIsRead) {
  m_oApplication.reset();
  chmod(Path().c_str(), 0444);
  const auto before = m_oFolder.Contents();
  EXPECT_EQ("2 pages, admin refused, " + std::string(kOnline), AsOrdinaryUser([&] {
              const bool bAdmin = Open().Admin();
              return std::to_string(State()->DataTotal()) + " pages, " + (bAdmin ? "" : "admin refused, ") +
                     StateOf(*m_oDatabase);
            }));
  EXPECT_EQ(before, m_oFolder.Contents());
}

TEST_F(SQLiteState, TheLogOfAFileThatMayNotBeWrittenIsShared) {
  { Application(Path(), "PRAGMA journal_mode=WAL; CREATE TABLE t(v)"); }
  Servant oReader([&](const std::string&) {
    if (!m_oDatabase && geteuid() == 0 && setuid(65534) != 0) return std::string("cannot change user");
    if (!m_oDatabase) Open();
    return std::to_string(State()->DataTotal()) + (State()->LogUsed() > 0 ? "+log" : "");
  });
  EXPECT_EQ("2", oReader.Ask("look"));
  InsertRows(App(), 20);
  const std::string sPages = App().Text("PRAGMA page_count");
  EXPECT_EQ(sPages + "+log", oReader.Ask("look"));
  // Figures that left the log out would be wrong ones.
  Folder oCopy;
  for (const std::string sName : {"a.db", "a.db-wal"}) fs::copy(Path(sName), oCopy / sName);
  chmod(oCopy.Path().c_str(), 0555);
  const std::string sError = AsOrdinaryUser([&] { return Opened(oCopy / "a.db"); });
  EXPECT_NE(std::string::npos, sError.find("write-ahead log cannot be read without write access")) << sError;
  m_oApplication.reset();
  EXPECT_EQ(sPages + "+log", oReader.Ask("look"));
}

TEST_F(SQLiteState, OfflineClosesTheFile) {
  { Application(Path(), "CREATE TABLE t(v)"); }
  const auto Holders = [oFile = ZELWbr3::SQLite::FileId::Of(Path()).value()] {
    return ZELWbr3::SQLite::OpenFiles::Processes(oFile);
  };
  Open();
  for (const bool bQuick : {false, true}) {
    EXPECT_EQ(kOnline, StateOf(*m_oDatabase));
    EXPECT_EQ(1, Holders());
    const auto oKept = State();
    EXPECT_TRUE(bQuick ? m_oDatabase->ShutdownQuick() : m_oDatabase->Shutdown());
    EXPECT_EQ("2 Offline connected", StateOf(*m_oDatabase));
    EXPECT_EQ(0, Holders());
    EXPECT_EQ("Offline", oKept->StateText()) << "read late, it tells what is so by then";
    EXPECT_TRUE(m_oDatabase->Online());
    EXPECT_GT(State()->StartOn().Year, 2000);
  }
  EXPECT_FALSE(State()->AutoLog()) << "it would have to be turned off before each shutdown";
  EXPECT_FALSE(m_oDatabase->RestartUntil({2024, 1, 1, 0, 0, 0}) || m_oDatabase->AutoLogOff())
      << "there is no such thing";
  EXPECT_EQ(kOnline, StateOf(*m_oDatabase));
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
  EXPECT_EQ("2 Offline (recovery needed) connected", StateOf(*m_oDatabase));
  EXPECT_EQ(crashed, m_oFolder.Contents());
  EXPECT_TRUE(m_oDatabase->Online()) << Error();
  EXPECT_EQ(kOnline, StateOf(*m_oDatabase));
  EXPECT_FALSE(fs::exists(Path("a.db-journal")));
  EXPECT_EQ(100, Number("SELECT count(*) FROM t WHERE length(v) = 1000"));
}

// The library keeps its files beside the database that a link leads to.
TEST_F(SQLiteState, ProgramsWriteOverNoneOfItsFiles) {
  fs::create_directory(Path("real"));
  Application oApplication(Path("real/r.db"), "PRAGMA journal_mode=WAL; CREATE TABLE t(v)");
  fs::create_symlink("real/r.db", Path("link.db"));
  fs::create_symlink(Path("real/r.db-journal"), Path("dangling"));
  fs::create_hard_link(Path("real/r.db-wal"), Path("hard"));
  for (const char* sFile : {"real/r.db", "link.db", "real/r.db-wal", "real/../real/r.db-shm", "dangling", "hard"}) {
    for (const char* sInstance : {"sqlite:real/r.db", "sqlite:link.db"}) {
      const std::string sName = "sqlite:" + Path(std::string(sInstance).substr(7));
      EXPECT_THROW(ZELWbr3::Host::CheckOutputFiles(sName, {{"--out", Path(sFile)}}), std::invalid_argument) << sFile;
    }
  }
  ZELWbr3::Host::CheckOutputFiles("sqlite:" + Path("link.db"), {{"--out", Path("link.db-wal")}});
}
