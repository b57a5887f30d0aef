#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;

namespace {

constexpr int kWalHeader = 32;
constexpr int kFrame = 24 + 4096;

class SQLiteLog : public testing::Test {
 protected:
  int FileFrames() const { return int((std::filesystem::file_size(m_oFolder / "a.db-wal") - kWalHeader) / kFrame); }

  Folder m_oFolder;
  Application m_oWriter{m_oFolder / "a.db",
                        "PRAGMA page_size=4096; PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0"};
};

}  // namespace

TEST_F(SQLiteLog, UsedAreTheFramesThatAreStillNeeded) {
  const auto oDatabase = OpenDatabase(m_oFolder / "a.db");
  EXPECT_EQ(0, oDatabase->StateInfo()->LogUsed());
  InsertRows(m_oWriter, 100);
  const int iWritten = FileFrames();
  ASSERT_GT(iWritten, 100);
  EXPECT_EQ(iWritten, oDatabase->StateInfo()->LogUsed());

  // A transaction that is not committed has not written to the log for others.
  m_oWriter.Run("PRAGMA cache_size=5; BEGIN");
  m_oWriter.Run(
      "WITH n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<200) "
      "INSERT INTO t(v) SELECT randomblob(1000) FROM n");
  ASSERT_GT(FileFrames(), iWritten);
  EXPECT_EQ(iWritten, oDatabase->StateInfo()->LogUsed());
  m_oWriter.Run("ROLLBACK");
  InsertRows(m_oWriter, 1);
  const int iUsed = oDatabase->StateInfo()->LogUsed();
  EXPECT_EQ(iUsed, m_oWriter.Number("PRAGMA wal_checkpoint(PASSIVE)", 1));

  EXPECT_EQ(0, oDatabase->StateInfo()->LogUsed()) << "all frames are in the database file";
  EXPECT_EQ(0, oDatabase->StateInfo()->LogPercent());
  InsertRows(m_oWriter, 1);  // begins at the first frame again
  EXPECT_GT(oDatabase->StateInfo()->LogUsed(), 0);
  EXPECT_LT(oDatabase->StateInfo()->LogUsed(), 10);
}

TEST_F(SQLiteLog, TotalIsTheFileButAtLeastTheCheckpointLimit) {
  const auto oDatabase = OpenDatabase(m_oFolder / "a.db");
  const int iLimit = Application(m_oFolder / "a.db").Number("PRAGMA wal_autocheckpoint");
  InsertRows(m_oWriter, 100);
  EXPECT_EQ(iLimit, oDatabase->StateInfo()->LogTotal());
  EXPECT_EQ(FileFrames() * 100 / iLimit, oDatabase->StateInfo()->LogPercent());
  InsertRows(m_oWriter, 700);
  ASSERT_GT(FileFrames(), iLimit);
  EXPECT_EQ(100, oDatabase->StateInfo()->LogPercent());
  m_oWriter.Run("PRAGMA wal_checkpoint(PASSIVE)");
  EXPECT_EQ(FileFrames(), oDatabase->StateInfo()->LogTotal()) << "the file keeps its size";
  m_oWriter.Run("PRAGMA wal_checkpoint(TRUNCATE)");
  EXPECT_EQ(iLimit, oDatabase->StateInfo()->LogTotal());
}

TEST_F(SQLiteLog, SettingsFollowAChangeOfTheJournalMode) {
  InsertRows(m_oWriter, 3);
  const auto oDatabase = OpenDatabase(m_oFolder / "a.db");
  EXPECT_EQ(1, oDatabase->LogSettings()->AutoOverwrite());
  EXPECT_EQ(1, oDatabase->LogSettings()->WriteOff());
  // Leaving WAL mode needs the file for oneself.
  oDatabase->Shutdown();
  m_oWriter.Run("PRAGMA journal_mode=DELETE");
  oDatabase->Online();
  EXPECT_EQ(2, oDatabase->LogSettings()->AutoOverwrite());
  EXPECT_EQ(0, oDatabase->StateInfo()->LogTotal());
  // Entering it does not.
  m_oWriter.Run("PRAGMA journal_mode=WAL");
  InsertRows(m_oWriter, 3);
  EXPECT_EQ(1, oDatabase->LogSettings()->AutoOverwrite());
  EXPECT_EQ(FileFrames(), oDatabase->StateInfo()->LogUsed());
}

TEST(SQLiteLogLeft, LogThatOthersWroteStaysWhenTheInstanceIsTheLastToLeave) {
  Folder oFolder;
  { Application(oFolder / "a.db", "PRAGMA journal_mode=WAL; CREATE TABLE t(v)"); }
  auto oDatabase = OpenDatabase(oFolder / "a.db");
  { Application(oFolder / "a.db", "INSERT INTO t VALUES(1)"); }
  const auto before = oFolder.Contents();
  ASSERT_FALSE(before.at("a.db-wal").empty());
  oDatabase.reset();
  const auto after = oFolder.Contents();
  EXPECT_EQ(before.at("a.db"), after.at("a.db"));
  EXPECT_EQ(before.at("a.db-wal"), after.at("a.db-wal"));
  EXPECT_EQ(1, Application(oFolder / "a.db").Number("SELECT count(*) FROM t"));
}

TEST_F(SQLiteLog, LogOfAFilePutInThePlaceOfTheOpenedOneStays) {
  const std::string sOther = m_oFolder / "b.db";
  { Application(sOther, "PRAGMA journal_mode=WAL; CREATE TABLE t(v)"); }
  auto oDatabase = OpenDatabase(sOther);
  ASSERT_TRUE(std::filesystem::exists(sOther + "-wal")) << "the instance's own, to be taken away at the end";
  for (const char* sEnding : {"", "-wal", "-shm"}) std::filesystem::remove(sOther + sEnding);
  Application oSuccessor(sOther, "PRAGMA journal_mode=WAL; CREATE TABLE t(v)");
  oSuccessor.Run("PRAGMA wal_checkpoint(TRUNCATE)");
  ASSERT_EQ(0u, std::filesystem::file_size(sOther + "-wal"));
  oDatabase.reset();
  EXPECT_TRUE(std::filesystem::exists(sOther + "-wal"));
}
