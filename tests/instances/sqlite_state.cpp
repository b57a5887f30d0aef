#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

#include <sys/stat.h>

using namespace SQLiteFiles;
using ZELWbr3::SQLite::FileId;
using ZELWbr3::SQLite::OpenFiles;

namespace {

/// "status text connected available": the state in one line.
std::string State(ZELLib3::Database& oDatabase) {
  const auto oState = oDatabase.StateInfo();
  return std::to_string(oState->Status()) + " " + oState->StateText() + (oDatabase.Connected() ? " connected" : "") +
         (oState->InfoAvailable() ? " available" : "");
}

std::string ErrorOf(const std::string& sPath) {
  try {
    return State(*OpenDatabase(sPath));
  } catch (const ZELLib3::InstanceError& oError) {
    EXPECT_NE(0, oError.ErrorObject().ErrorCode);
    return oError.what();
  }
}

constexpr char kOnline[] = "5 Online connected available";

}  // namespace

TEST(SQLiteOpen, BadFilesAreNamedAndNothingIsMade) {
  Folder oFolder;
  std::filesystem::create_directory(oFolder / "folder.db");
  mkfifo((oFolder / "pipe.db").c_str(), 0666);
  WriteFile(oFolder / "text.db", std::string(5000, 'x'));
  std::string sHeader(4096, '\0');
  sHeader.replace(0, 15, "SQLite format 3");
  sHeader[16] = 3;  // a page of 768 bytes
  WriteFile(oFolder / "size.db", sHeader);
  sHeader[16] = 16;
  WriteFile(oFolder / "zeros.db", sHeader);
  const struct {
    const char* sName;
    const char* sWrong;
  } cases[] = {
      {"missing.db", "no such file"},
      {"folder.db", "is a folder, not a database file"},
      {"pipe.db", "is not a regular file"},
      {"text.db", "is not a SQLite database, or it is encrypted"},
      {"size.db", "has a damaged header: page size 768"},
      {"zeros.db", "reading the page count: file is not a database, or it is encrypted"},
      {"line\nbreak.db", "no such file"},
      {"file:a.db?mode=rwc", "no such file"},
  };
  const auto before = std::distance(std::filesystem::directory_iterator(oFolder.Path()), {});
  for (const auto& c : cases) {
    std::string sShown = oFolder / c.sName;
    std::replace(sShown.begin(), sShown.end(), '\n', ' ');
    EXPECT_EQ(sShown + ": " + c.sWrong, ErrorOf(oFolder / c.sName));
  }
  EXPECT_NE(std::string::npos, ErrorOf("").find("no file name given"));
  EXPECT_NE(std::string::npos, ErrorOf(std::string("a\0b", 3)).find("NUL"));
  EXPECT_NE(std::string::npos, ErrorOf(":memory:").find("no such file"));
  EXPECT_EQ(before, std::distance(std::filesystem::directory_iterator(oFolder.Path()), {}));

  Application(oFolder / "secret.db", "CREATE TABLE t(v)");
  chmod((oFolder / "secret.db").c_str(), 0000);
  EXPECT_EQ(oFolder / "secret.db: Permission denied", AsOrdinaryUser([&] { return ErrorOf(oFolder / "secret.db"); }));
}

TEST(SQLiteOpen, DamageDoneLaterIsToldAndNotShownAsFigures) {
  Folder oFolder;
  const auto Write = [&](int iOffset, const std::string& sBytes) {
    std::fstream(oFolder / "a.db", std::ios::in | std::ios::out | std::ios::binary).seekp(iOffset) << sBytes;
  };
  Application(oFolder / "a.db", "CREATE TABLE t(v)");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  oDatabase->Shutdown();
  Write(21, "\xff\xff\xff");
  EXPECT_FALSE(oDatabase->Online());
  EXPECT_EQ(oFolder / "a.db: reading the page count: file is not a database, or it is encrypted",
            oDatabase->LastError().ErrorText);
  EXPECT_EQ("2 Offline connected", State(*oDatabase));
  Write(21, "@  ");  // as it was
  EXPECT_TRUE(oDatabase->Online());
  Write(24, std::string(4, '\xff'));  // the change counter, so that nothing cached is used
  Write(100, "\xff");                 // the kind of the schema's first page
  EXPECT_THROW(oDatabase->StateInfo()->AutoUpdateStatistics(), ZELLib3::InstanceError);
  Write(0, std::string(100, '\xff'));
  EXPECT_EQ("0 Not connected", State(*oDatabase));
  EXPECT_EQ(oFolder / "a.db: is not a SQLite database, or it is encrypted", oDatabase->LastError().ErrorText);
}

TEST(SQLiteOpen, FilesThatMayNotBeWritten) {
  for (const char* sMode : {"DELETE", "WAL"}) {
    SCOPED_TRACE(sMode);
    Folder oFolder;
    Application(oFolder / "a.db", std::string("PRAGMA journal_mode=") + sMode + "; CREATE TABLE t(v)");
    chmod((oFolder / "a.db").c_str(), 0444);
    const auto before = oFolder.Contents();
    EXPECT_EQ("2 pages, " + std::string(kOnline) + "; admin refused", AsOrdinaryUser([&] {
                const auto oDatabase = OpenDatabase(oFolder / "a.db");
                std::string sResult = std::to_string(oDatabase->StateInfo()->DataTotal()) + " pages, ";
                if (!oDatabase->Admin()) return sResult + State(*oDatabase) + "; admin refused";
                return sResult;
              }));
    EXPECT_EQ(before, oFolder.Contents());
  }
}

TEST(SQLiteOpen, LogOfAFileThatMayNotBeWritten) {
  // The owner's log is shared while he has it open.
  Folder oFolder;
  Application oOwner(oFolder / "a.db", "PRAGMA journal_mode=WAL; CREATE TABLE t(v)");
  InsertRows(oOwner, 1);
  const auto read = [&] {
    const auto oDatabase = OpenDatabase(oFolder / "a.db");
    const auto oState = oDatabase->StateInfo();
    return std::to_string(oState->DataTotal()) + " " + std::to_string(oState->LogUsed() > 0);
  };
  EXPECT_EQ(oOwner.Text("PRAGMA page_count") + " 1", AsOrdinaryUser(read));
  // Figures that left the log out would be wrong ones.
  Folder oCopy;
  for (const char* sEnding : {"", "-wal"}) {
    std::filesystem::copy(oFolder / (std::string("a.db") + sEnding), oCopy / (std::string("a.db") + sEnding));
  }
  chmod(oCopy.Path().c_str(), 0555);
  const std::string sError = AsOrdinaryUser([&] { return ErrorOf(oCopy / "a.db"); });
  EXPECT_NE(std::string::npos, sError.find("write-ahead log cannot be read without write access")) << sError;
}

TEST(SQLiteOpen, UnwritableFileIsReadAfreshWhenItsOwnerChangesIt) {
  Folder oFolder;
  { Application(oFolder / "a.db", "PRAGMA journal_mode=WAL; CREATE TABLE t(v)"); }
  std::shared_ptr<ZELLib3::Database> oDatabase;  // the reader's
  Servant oReader([&](const std::string&) {
    if (!oDatabase && geteuid() == 0 && setuid(65534) != 0) return std::string("cannot change user");
    if (!oDatabase) oDatabase = OpenDatabase(oFolder / "a.db");
    const auto oState = oDatabase->StateInfo();
    return std::to_string(oState->DataTotal()) + (oState->LogUsed() > 0 ? "+log" : "");
  });
  EXPECT_EQ("2", oReader.Ask("look"));
  auto oOwner = std::make_unique<Application>(oFolder / "a.db");
  InsertRows(*oOwner, 20);
  const std::string sPages = oOwner->Text("PRAGMA page_count");
  EXPECT_EQ(sPages + "+log", oReader.Ask("look"));
  oOwner.reset();
  EXPECT_EQ(sPages + "+log", oReader.Ask("look"));
}

TEST(SQLiteState, OfflineClosesTheFile) {
  Folder oFolder;
  Application(oFolder / "a.db", "CREATE TABLE t(v)");
  const auto oFile = FileId::Of(oFolder / "a.db").value();
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  for (const bool bQuick : {false, true}) {
    EXPECT_EQ(kOnline, State(*oDatabase));
    EXPECT_EQ(1, OpenFiles::Processes(oFile));
    const auto oKept = oDatabase->StateInfo();
    EXPECT_TRUE(bQuick ? oDatabase->ShutdownQuick() : oDatabase->Shutdown());
    EXPECT_EQ("2 Offline connected", State(*oDatabase));
    EXPECT_EQ(0, OpenFiles::Processes(oFile));
    EXPECT_EQ("Offline", oKept->StateText()) << "read late, it tells what is so by then";
    EXPECT_TRUE(oDatabase->Online());
    EXPECT_GT(oDatabase->StateInfo()->StartOn().Year, 2000);
  }
}

TEST(SQLiteState, AdminLocksOthersOut) {
  for (const char* sMode : {"DELETE", "WAL"}) {
    SCOPED_TRACE(sMode);
    Folder oFolder;
    auto oApplication = std::make_unique<Application>(
        oFolder / "a.db", std::string("PRAGMA journal_mode=") + sMode + "; CREATE TABLE t(v)");
    const auto oDatabase = OpenDatabase(oFolder / "a.db", {.BusyTimeout = std::chrono::milliseconds(1)});
    oApplication->Run("BEGIN; SELECT * FROM t");
    EXPECT_FALSE(oDatabase->Admin());
    EXPECT_EQ(5, oDatabase->LastError().ErrorCode & 0xff);
    EXPECT_EQ(oFolder / "a.db: locking other connections out: database is locked", oDatabase->LastError().ErrorText);
    EXPECT_EQ(kOnline, State(*oDatabase)) << "a change that failed changes nothing";
    oApplication.reset();

    EXPECT_TRUE(oDatabase->Admin()) << oDatabase->LastError().ErrorText;
    EXPECT_EQ("3 Admin connected", State(*oDatabase));
    EXPECT_EQ(SQLITE_BUSY, Application(oFolder / "a.db").Try("SELECT * FROM t"));
    EXPECT_TRUE(oDatabase->Online());
    EXPECT_EQ(SQLITE_OK, Application(oFolder / "a.db").Try("INSERT INTO t VALUES(1)"));
  }
}

TEST(SQLiteState, LockedFileIsOnlineWithoutFigures) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db", "CREATE TABLE t(v); BEGIN EXCLUSIVE");
  const auto oDatabase = OpenDatabase(oFolder / "a.db", {.BusyTimeout = std::chrono::milliseconds(1)});
  EXPECT_EQ("5 Online (locked by another connection) connected", State(*oDatabase));
  EXPECT_FALSE(oDatabase->StateInfo()->DataFull());
  EXPECT_EQ(0, oDatabase->LogSettings()->AutoOverwrite());
  EXPECT_EQ(0, oDatabase->StateInfo()->AutoUpdateStatistics());
  oApplication.Run("COMMIT");
  EXPECT_EQ(kOnline, State(*oDatabase));
  oApplication.Run("BEGIN IMMEDIATE; INSERT INTO t VALUES(1)");
  EXPECT_EQ(kOnline, State(*oDatabase)) << "a writer before its commit is in nobody's way";
}

TEST(SQLiteState, VanishedFileIsNotConnectedUntilItIsBack) {
  for (const char* sMode : {"DELETE", "WAL"}) {
    SCOPED_TRACE(sMode);
    Folder oFolder;
    const std::string sPath = oFolder / "a.db";
    { Application(sPath, std::string("PRAGMA journal_mode=") + sMode + "; CREATE TABLE t(v)"); }
    const auto oDatabase = OpenDatabase(sPath);
    std::filesystem::remove(sPath);
    EXPECT_EQ("0 Not connected", State(*oDatabase));
    EXPECT_EQ(sPath + ": no such file", oDatabase->LastError().ErrorText);
    EXPECT_FALSE(oDatabase->Online());
    EXPECT_FALSE(std::filesystem::exists(sPath));
    EXPECT_TRUE(oDatabase->Shutdown());
    EXPECT_EQ("0 Not connected", State(*oDatabase));
    oDatabase->Online();

    Application oNew(sPath);
    InsertRows(oNew, 30);
    EXPECT_TRUE(oDatabase->Online()) << oDatabase->LastError().ErrorText;
    EXPECT_EQ(oNew.Number("PRAGMA page_count"), oDatabase->StateInfo()->DataTotal());

    // Replaced in one step, as a backup that is copied back is.
    { Application(oFolder / "b.db", "PRAGMA page_size=1024; CREATE TABLE t(v)"); }
    std::filesystem::rename(oFolder / "b.db", sPath);
    EXPECT_EQ(2, oDatabase->StateInfo()->DataTotal());
    EXPECT_EQ(1024, oDatabase->PageSize());
  }
}

TEST(SQLiteState, TransactionThatACrashLeftIsRolledBackByOnlineOnly) {
  Folder oFolder;
  Application oBefore(oFolder / "a.db");
  InsertRows(oBefore, 100);
  EXPECT_EQ("", Process([&] {
                  Application oCrashing(oFolder / "a.db", "PRAGMA cache_size=5; BEGIN; UPDATE t SET v = zeroblob(900)");
                  _exit(0);
                  return std::string("alive");
                }).Result());
  const auto crashed = oFolder.Contents();
  ASSERT_TRUE(crashed.count("a.db-journal"));
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  EXPECT_EQ("2 Offline (recovery needed) connected", State(*oDatabase));
  EXPECT_EQ(crashed, oFolder.Contents());
  EXPECT_TRUE(oDatabase->Online()) << oDatabase->LastError().ErrorText;
  EXPECT_EQ(kOnline, State(*oDatabase));
  EXPECT_FALSE(std::filesystem::exists(oFolder / "a.db-journal"));
  EXPECT_EQ(100, oBefore.Number("SELECT count(*) FROM t WHERE length(v) = 1000"));
}

TEST(SQLiteState, OperationsThatAFileDoesNotHaveAreRefused) {
  Folder oFolder;
  Application(oFolder / "a.db", "CREATE TABLE t(v)");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  EXPECT_FALSE(oDatabase->StateInfo()->AutoLog()) << "it would have to be turned off before each shutdown";
  EXPECT_FALSE(oDatabase->RestartUntil({2024, 1, 1, 0, 0, 0}));
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("point in time"));
  EXPECT_FALSE(oDatabase->AutoLogOff());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("log backup"));
  EXPECT_EQ(kOnline, State(*oDatabase));
}
