#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;

TEST(SQLiteFigures, DataAreaIsWhatTheFileHolds) {
  for (const char* sMode : {"DELETE", "WAL"}) {
    for (const int iPageSize : {512, 65536}) {
      SCOPED_TRACE(std::string(sMode) + " " + std::to_string(iPageSize));
      Folder oFolder;
      Application oApplication(oFolder / "a.db", "PRAGMA page_size=" + std::to_string(iPageSize) +
                                                     "; PRAGMA auto_vacuum=NONE; PRAGMA journal_mode=" + sMode);
      InsertRows(oApplication, 200);
      const auto oDatabase = OpenDatabase(oFolder / "a.db");
      EXPECT_EQ(iPageSize, oDatabase->PageSize());
      EXPECT_EQ(100, oDatabase->StateInfo()->DataPercent());

      // Half of the rows go: what the page shows next is what is so then.
      oApplication.Run("DELETE FROM t WHERE id > 100");
      const auto oState = oDatabase->StateInfo();
      const int iTotal = oApplication.Number("PRAGMA page_count");
      const int iFree = oApplication.Number("PRAGMA freelist_count");
      ASSERT_GT(iFree, 0);
      EXPECT_EQ(iTotal, oState->DataTotal());
      EXPECT_EQ(iTotal - iFree, oState->DataUsed());
      EXPECT_EQ((iTotal - iFree) * 100 / iTotal, oState->DataPercent());
      EXPECT_FALSE(oState->DataFull());
    }
  }
}

TEST(SQLiteFigures, DataAreaIsFullAtThePageLimitUnlessPagesAreFree) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db", "PRAGMA auto_vacuum=NONE");
  InsertRows(oApplication, 50);
  const int iPages = oApplication.Number("PRAGMA page_count");
  const auto oRoomy = OpenDatabase(oFolder / "a.db", {.MaxPageCount = iPages + 1});
  const auto oFull = OpenDatabase(oFolder / "a.db", {.MaxPageCount = iPages});
  const auto oOverfull = OpenDatabase(oFolder / "a.db", {.MaxPageCount = 1});
  EXPECT_FALSE(oRoomy->StateInfo()->AnyAreaFull());
  EXPECT_LT(100, oRoomy->StateInfo()->BarThresholds()[2]) << "a packed file that can grow is no alarm";
  for (const auto& oDatabase : {oFull, oOverfull}) {
    EXPECT_TRUE(oDatabase->StateInfo()->DataFull());
    EXPECT_TRUE(oDatabase->StateInfo()->AnyAreaFull());
    EXPECT_GE(100, oDatabase->StateInfo()->BarThresholds()[2]);
  }
  oApplication.Run("DELETE FROM t WHERE id > 10");
  EXPECT_FALSE(oFull->StateInfo()->DataFull());
}

TEST(SQLiteFigures, FiguresOfAPageAreOfOneMoment) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db");
  InsertRows(oApplication, 10);
  const auto oDatabase = ZELWbr3::SQLite::OpenDatabase(oFolder / "a.db", {.ReadingLifetime = std::chrono::hours(1)});
  const int iTotal = oDatabase->StateInfo()->DataTotal();
  InsertRows(oApplication, 50);
  EXPECT_EQ(iTotal, oDatabase->StateInfo()->DataUsed()) << "a file that grows meanwhile has never more used than total";
  oDatabase->Shutdown();
  EXPECT_EQ(2, oDatabase->StateInfo()->Status()) << "the instance's own changes show at once";
  oDatabase->Online();
  EXPECT_EQ(oApplication.Number("PRAGMA page_count"), oDatabase->StateInfo()->DataTotal());
  std::filesystem::remove(oFolder / "a.db");
  EXPECT_FALSE(oDatabase->StateInfo()->InfoAvailable()) << "and so does a file that vanishes";
}

TEST(SQLiteFigures, NamesTheFileTheSystemAndTheLibrary) {
  Folder oFolder;
  std::filesystem::create_directory(oFolder / "sub");
  const std::string sName = "Größe 100%?#&immutable=1;'\".db";
  Application(oFolder / ("sub/" + sName), "CREATE TABLE t(v)");
  const auto oDatabase = OpenDatabase(oFolder / ("sub/../sub/" + sName));
  EXPECT_EQ(sName, oDatabase->InstanceName());
  EXPECT_EQ(oFolder / "sub", oDatabase->RunDirectory());
  EXPECT_EQ(std::string("SQLite ") + sqlite3_libversion(), oDatabase->Version()->Text());
  EXPECT_FALSE(std::filesystem::exists(oFolder / "sub/Größe 100%")) << "the name was taken for a URI";
}

TEST(SQLiteFigures, StatisticsAreNeverClaimedToBeAutomatic) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db", "CREATE TABLE t(v); CREATE INDEX i ON t(v); INSERT INTO t VALUES(1)");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  EXPECT_EQ(1, oDatabase->StateInfo()->AutoUpdateStatistics());
  oApplication.Run("ANALYZE");
  EXPECT_EQ(0, oDatabase->StateInfo()->AutoUpdateStatistics());
}

TEST(SQLiteFigures, EmptyFileIsAnEmptyDatabase) {
  Folder oFolder;
  WriteFile(oFolder / "a.db", "");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  EXPECT_EQ(5, oDatabase->StateInfo()->Status());
  EXPECT_EQ(0, oDatabase->StateInfo()->DataTotal());
  EXPECT_EQ(0, oDatabase->StateInfo()->DataPercent());
  Application(oFolder / "a.db", "PRAGMA page_size=8192; CREATE TABLE t(v)");
  EXPECT_EQ(2, oDatabase->StateInfo()->DataTotal());
  EXPECT_EQ(8192, oDatabase->PageSize());
}

TEST(SQLiteFigures, ReadingChangesNothing) {
  for (const std::string sMode : {"DELETE", "TRUNCATE", "PERSIST", "MEMORY", "OFF", "WAL", "WAL; -- left behind"}) {
    SCOPED_TRACE(sMode);
    Folder oFolder;
    {
      Application oApplication(oFolder / "a.db", "PRAGMA journal_mode=" + sMode);
      InsertRows(oApplication, 20);
      if (sMode.ends_with("left behind")) oApplication.LeaveLogBehind();
    }
    // The index of a log holds read marks; it is rebuilt at will.
    std::filesystem::remove(oFolder / "a.db-shm");
    const auto before = oFolder.Contents();
    {
      const auto oDatabase = OpenDatabase(oFolder / "a.db");
      EXPECT_GT(oDatabase->StateInfo()->DataTotal(), 0);
      oDatabase->StateInfo()->AutoUpdateStatistics();
      EXPECT_TRUE(oDatabase->Shutdown() && oDatabase->Online() && oDatabase->Admin())
          << oDatabase->LastError().ErrorText;
    }
    std::filesystem::remove(oFolder / "a.db-shm");
    EXPECT_EQ(before, oFolder.Contents());
  }
}
