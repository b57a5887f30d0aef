#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;
namespace fs = std::filesystem;

namespace {

using Figures = std::vector<int>;

class SQLiteFigures : public SQLiteTest {
 protected:
  std::shared_ptr<ZELLib3::StateInfo> State() { return m_oDatabase->StateInfo(); }
};

class SQLiteData : public SQLiteTestWith {};
class SQLiteUntouched : public SQLiteTestWith {};

/// A file in WAL mode whose log nobody copies.
class SQLiteLog : public SQLiteFigures {
 protected:
  SQLiteLog() { Run("PRAGMA page_size=4096; PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0"); }
  /// Frames that the log file has room for.
  int FileFrames() const { return int((fs::file_size(Path("a.db-wal")) - 32) / (24 + 4096)); }
  std::shared_ptr<ZELLib3::Volume> Volume() { return m_oDatabase->LogArea()->Volumes()->Item(1); }
  /// Total, checkpoint limit, free, used, not copied.
  Figures Sizes() {
    const auto oArea = m_oDatabase->LogArea();
    return {oArea->Size(0), oArea->Size(1), oArea->Size(2), oArea->Size(3), oArea->Size(4)};
  }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(, SQLiteData,
                         testing::Values("PRAGMA page_size=512; PRAGMA journal_mode=DELETE",
                                         "PRAGMA page_size=65536; PRAGMA journal_mode=DELETE",
                                         "PRAGMA page_size=512; PRAGMA journal_mode=WAL",
                                         "PRAGMA page_size=65536; PRAGMA journal_mode=WAL"));

TEST_P(SQLiteData, AreaIsWhatTheFileHolds) {
  InsertRows(App(), 200);
  Open();
  EXPECT_EQ(Number("PRAGMA page_size"), m_oDatabase->PageSize());
  EXPECT_EQ(100, m_oDatabase->StateInfo()->DataPercent());
  Run("DELETE FROM t WHERE id > 50");
  const int iTotal = Number("PRAGMA page_count");
  const int iUsed = iTotal - Number("PRAGMA freelist_count");
  ASSERT_LT(iUsed, iTotal);
  const auto oState = m_oDatabase->StateInfo();
  EXPECT_FALSE(oState->DataFull());
  const auto oArea = m_oDatabase->DataArea();
  ASSERT_TRUE(oArea->Refresh());
  EXPECT_EQ((Figures{iTotal, iTotal, iUsed, iUsed * 100 / iTotal}),
            (Figures{oArea->Size(0), oState->DataTotal(), oState->DataUsed(), oState->DataPercent()}));
  const auto oVolumes = oArea->Volumes();
  const auto oVolume = oVolumes->Item(1);
  EXPECT_EQ((Figures{1, 1, iTotal, iUsed, iTotal, iUsed, iTotal - iUsed}),
            (Figures{oVolumes->Count(), oVolumes->MaxCount(), oVolumes->CurrentSize(), oVolumes->UsedSize(),
                     oVolume->Size(), oVolume->UsedSize(), oVolume->FreeSize()}));
  EXPECT_EQ(Path(), oVolume->Name());
  EXPECT_EQ(0u, oVolume->Info2().find(App().Text("PRAGMA page_size") + " bytes a page, ")) << oVolume->Info2();
  EXPECT_GT(oVolume->IOCount2(), 0);
  EXPECT_EQ(0, oVolume->IOCount4()) << "this connection never writes";
}

TEST_F(SQLiteFigures, TheDataAreaIsFullAtThePageLimitUnlessPagesAreFree) {
  InsertRows(App(), 50);
  const int iPages = Number("PRAGMA page_count");
  for (const int iLimit : {iPages + 1, iPages, 1}) {
    Open({.MaxPageCount = iLimit});
    const bool bFull = iLimit <= iPages;
    EXPECT_EQ(bFull, State()->DataFull()) << iLimit;
    EXPECT_EQ(bFull, State()->AnyAreaFull()) << iLimit;
    EXPECT_EQ(bFull, State()->BarThresholds()[2] <= 100) << "a packed file that can grow is no alarm";
  }
  Run("DELETE FROM t WHERE id > 10");
  EXPECT_FALSE(State()->DataFull());
}

TEST_F(SQLiteFigures, ThoseOfAPageAreOfOneMoment) {
  InsertRows(App(), 10);
  m_oDatabase = ZELWbr3::SQLite::OpenDatabase(Path(), {.ReadingLifetime = std::chrono::hours(1)});
  const int iTotal = State()->DataTotal();
  InsertRows(App(), 50);
  EXPECT_EQ(iTotal, State()->DataUsed()) << "a file that grows has never more used than total";
  m_oDatabase->Shutdown();
  EXPECT_EQ(2, State()->Status()) << "the instance's own changes show at once";
  m_oDatabase->Online();
  EXPECT_EQ(Number("PRAGMA page_count"), State()->DataTotal());
  fs::remove(Path());
  EXPECT_FALSE(State()->InfoAvailable()) << "and so does a file that vanishes";
}

TEST_F(SQLiteFigures, NameTheFileTheSystemAndTheLibrary) {
  fs::create_directory(Path("sub"));
  const std::string sName = "Größe 100%?#&immutable=1;'\".db";
  Application(Path("sub/" + sName), "CREATE TABLE t(v)");
  const auto oDatabase = OpenDatabase(Path("sub/../sub/" + sName));
  EXPECT_EQ(sName, oDatabase->InstanceName());
  EXPECT_EQ(Path("sub"), oDatabase->RunDirectory());
  EXPECT_EQ(std::string("SQLite ") + sqlite3_libversion(), oDatabase->Version()->Text());
  EXPECT_FALSE(fs::exists(Path("sub/Größe 100%"))) << "the name was taken for a URI";
}

TEST_F(SQLiteFigures, AnEmptyFileIsAnEmptyDatabase) {
  WriteFile(Path(), "");
  Open();
  EXPECT_EQ((Figures{5, 0, 0}), (Figures{State()->Status(), State()->DataTotal(), State()->DataPercent()}));
  Run("PRAGMA page_size=8192; CREATE TABLE t(v); CREATE INDEX i ON t(v); INSERT INTO t VALUES(1)");
  EXPECT_EQ((Figures{3, 8192}), (Figures{State()->DataTotal(), m_oDatabase->PageSize()}));
  // Statistics are never claimed to be automatic.
  EXPECT_EQ(1, State()->AutoUpdateStatistics());
  Run("ANALYZE");
  EXPECT_EQ(0, State()->AutoUpdateStatistics());
}

TEST_F(SQLiteFigures, WithoutThemTheFileSystemTellsTheSize) {
  InsertRows(App(), 20);
  const int iPages = Number("PRAGMA page_count");
  Open({.BusyTimeout = std::chrono::milliseconds(1)});
  const auto ExpectSize = [&](const std::string& sInfo) {
    const auto oVolume = m_oDatabase->DataArea()->Volumes()->Item(1);
    EXPECT_EQ((Figures{iPages, -1}), (Figures{oVolume->Size(), oVolume->IOCount2()}));
    EXPECT_EQ(sInfo, oVolume->Info2());
  };
  Run("BEGIN EXCLUSIVE");
  EXPECT_FALSE(m_oDatabase->DataArea()->Refresh() || m_oDatabase->LogArea()->Refresh());
  ExpectError("locked");
  ExpectSize("4096 bytes a page, rollback journal");
  Run("COMMIT");
  EXPECT_TRUE(m_oDatabase->DataArea()->Refresh());
  m_oDatabase->Shutdown();
  EXPECT_TRUE(m_oDatabase->DataArea()->Refresh()) << "closed by the user is no failure";
  ExpectSize("closed");
  m_oDatabase->Online();
  fs::remove(Path());
  EXPECT_FALSE(m_oDatabase->DataArea()->Refresh());
  ExpectError("no such file");
  EXPECT_EQ(0, m_oDatabase->DataArea()->Volumes()->CurrentSize());
}

INSTANTIATE_TEST_SUITE_P(, SQLiteUntouched,
                         testing::Values("PRAGMA journal_mode=DELETE", "PRAGMA journal_mode=TRUNCATE",
                                         "PRAGMA journal_mode=PERSIST", "PRAGMA journal_mode=MEMORY",
                                         "PRAGMA journal_mode=OFF", "PRAGMA journal_mode=WAL",
                                         "PRAGMA journal_mode=WAL; -- left behind"));

TEST_P(SQLiteUntouched, ReadingChangesNothing) {
  InsertRows(App(), 20);
  if (std::string(GetParam()).ends_with("left behind")) App().LeaveLogBehind();
  m_oApplication.reset();
  // The index of a log holds read marks; it is rebuilt at will.
  fs::remove(Path("a.db-shm"));
  const auto before = m_oFolder.Contents();
  Open().StateInfo()->AutoUpdateStatistics();
  EXPECT_GT(m_oDatabase->StateInfo()->DataTotal(), 0);
  EXPECT_TRUE(m_oDatabase->Shutdown() && m_oDatabase->Online() && m_oDatabase->Admin()) << Error();
  m_oDatabase.reset();
  fs::remove(Path("a.db-shm"));
  EXPECT_EQ(before, m_oFolder.Contents());
}

TEST_F(SQLiteLog, UsedAreTheFramesThatAreStillNeeded) {
  Open();
  EXPECT_EQ(0, State()->LogUsed());
  InsertRows(App(), 100);
  const int iWritten = FileFrames();
  ASSERT_GT(iWritten, 100);
  EXPECT_EQ(iWritten, State()->LogUsed());
  const std::string sFrames = std::to_string(iWritten);
  EXPECT_EQ(Path("a.db-wal"), Volume()->Name());
  EXPECT_EQ(sFrames + " frames", Volume()->Info1());
  EXPECT_EQ("0 of " + sFrames + " copied into the database file; the file has room for " + sFrames, Volume()->Info2());

  // A transaction that is not committed has not written to the log for others.
  Run("PRAGMA cache_size=5; BEGIN");
  for (int i = 0; i < 200; ++i) Run("INSERT INTO t(v) VALUES(randomblob(1000))");
  ASSERT_GT(FileFrames(), iWritten);
  EXPECT_EQ(iWritten, State()->LogUsed());
  Run("ROLLBACK");

  // A reader holds the checkpoint up half way.
  Application oReader(Path(), "BEGIN; SELECT count(*) FROM t");
  InsertRows(App(), 10);
  ASSERT_EQ(iWritten, App().Number("PRAGMA wal_checkpoint(PASSIVE)", 2));
  const int iUsed = State()->LogUsed();
  ASSERT_GT(iUsed, iWritten);
  EXPECT_EQ((Figures{1000, 1000, 1000 - iUsed, iUsed, iUsed - iWritten}), Sizes()) << "none of it is free yet";
  EXPECT_EQ(0u, Volume()->Info2().find(sFrames + " of " + std::to_string(iUsed) + " copied")) << Volume()->Info2();
  oReader.Run("COMMIT");
  EXPECT_EQ(iUsed, App().Number("PRAGMA wal_checkpoint(PASSIVE)", 1));
  EXPECT_EQ((Figures{1000, 1000, 1000, 0, 0}), Sizes());
  EXPECT_EQ(0, State()->LogPercent());
  EXPECT_EQ(0u, Volume()->Info2().find("all copied into the database file;")) << Volume()->Info2();
  InsertRows(App(), 1);  // begins at the first frame again
  EXPECT_GT(State()->LogUsed(), 0);
  EXPECT_LT(State()->LogUsed(), 10);
}

TEST_F(SQLiteLog, TotalIsTheFileButAtLeastTheCheckpointLimit) {
  Open();
  InsertRows(App(), 100);
  EXPECT_EQ(1000, State()->LogTotal());
  EXPECT_EQ(FileFrames() * 100 / 1000, State()->LogPercent());
  InsertRows(App(), 700);
  ASSERT_GT(FileFrames(), 1000);
  EXPECT_EQ(100, State()->LogPercent());
  Run("PRAGMA wal_checkpoint(PASSIVE)");
  EXPECT_EQ(FileFrames(), State()->LogTotal()) << "the file keeps its size";
  Run("PRAGMA wal_checkpoint(TRUNCATE)");
  EXPECT_EQ(1000, State()->LogTotal());
}

TEST_F(SQLiteLog, SettingsFollowAChangeOfTheJournalMode) {
  InsertRows(App(), 3);
  Open();
  /// Overwritten, written off; then of the area: mode, overwritten, redo log.
  const auto Settings = [&] {
    const auto oSettings = m_oDatabase->LogSettings();
    const auto oArea = m_oDatabase->LogArea()->Settings();
    return Figures{oSettings->AutoOverwrite(), oSettings->WriteOff(), oArea->LogMode(), oArea->Overwrite(),
                   oArea->RedoLog()};
  };
  EXPECT_EQ((Figures{1, 1, 1, 2, 1}), Settings());
  // Leaving WAL mode needs the file for oneself.
  m_oDatabase->Shutdown();
  EXPECT_EQ((Figures{0, 0, 0, 0, 0}), Settings());
  Run("PRAGMA journal_mode=DELETE");
  m_oDatabase->Online();
  EXPECT_EQ((Figures{2, 1, 1, 2, 2}), Settings()) << "a journal holds what changes have replaced, not the changes";
  EXPECT_EQ(0, State()->LogTotal());
  EXPECT_EQ(0, m_oDatabase->LogArea()->Volumes()->Count());
  // Entering it does not.
  Run("PRAGMA journal_mode=WAL");
  EXPECT_EQ((Figures{1, 1, 1, 2, 1}), Settings());
  EXPECT_EQ("nothing to copy; the file has room for 0", Volume()->Info2());
  InsertRows(App(), 3);
  EXPECT_EQ(FileFrames(), State()->LogUsed());
}

TEST_F(SQLiteLog, ThatOthersWroteStaysWhenTheInstanceIsTheLastToLeave) {
  m_oApplication.reset();
  Open();
  InsertRows(App(), 1);
  m_oApplication.reset();
  auto before = m_oFolder.Contents();
  ASSERT_FALSE(before.at("a.db-wal").empty());
  m_oDatabase.reset();
  auto after = m_oFolder.Contents();
  for (auto* pContents : {&before, &after}) pContents->erase("a.db-shm");
  EXPECT_EQ(before, after);
  EXPECT_EQ(1, Number("SELECT count(*) FROM t"));
}

TEST_F(SQLiteLog, OfAFilePutInThePlaceOfTheOpenedOneStays) {
  m_oApplication.reset();
  Open();
  ASSERT_TRUE(fs::exists(Path("a.db-wal"))) << "the instance's own, to be taken away at the end";
  for (const char* sName : {"a.db", "a.db-wal", "a.db-shm"}) fs::remove(Path(sName));
  Run("PRAGMA journal_mode=WAL; CREATE TABLE t(v); PRAGMA wal_checkpoint(TRUNCATE)");
  ASSERT_EQ(0u, fs::file_size(Path("a.db-wal")));
  m_oDatabase.reset();
  EXPECT_TRUE(fs::exists(Path("a.db-wal")));
}
