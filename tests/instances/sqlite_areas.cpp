#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;

namespace {

/// "log mode, overwrite, redo log".
std::string Codes(ZELLib3::Database& oDatabase) {
  const auto oSettings = oDatabase.LogArea()->Settings();
  const auto Text = [](std::int32_t lCode) { return std::to_string(lCode); };
  return Text(oSettings->LogMode()) + " " + Text(oSettings->Overwrite()) + " " + Text(oSettings->RedoLog());
}

}  // namespace

TEST(SQLiteAreas, DataVolumeIsTheFile) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db", "PRAGMA page_size=1024; PRAGMA auto_vacuum=NONE");
  InsertRows(oApplication, 200);
  oApplication.Run("DELETE FROM t WHERE id > 50");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  const auto oArea = oDatabase->DataArea();
  ASSERT_TRUE(oArea->Refresh());
  const auto oVolumes = oArea->Volumes();
  const int iPages = oApplication.Number("PRAGMA page_count");
  const int iFree = oApplication.Number("PRAGMA freelist_count");
  ASSERT_GT(iFree, 100);
  ASSERT_EQ(1, oVolumes->Count());
  EXPECT_EQ(1, oVolumes->MaxCount()) << "a database is one file";
  const auto oVolume = oVolumes->Item(1);
  EXPECT_EQ(oFolder / "a.db", oVolume->Name());
  EXPECT_EQ("1024 bytes a page, rollback journal", oVolume->Info2());
  EXPECT_EQ(iPages, oVolume->Size());
  EXPECT_EQ(iPages - iFree, oVolume->UsedSize());
  EXPECT_EQ(iFree, oVolume->FreeSize());
  EXPECT_GT(oVolume->IOCount2(), 0);
  EXPECT_EQ(0, oVolume->IOCount4()) << "this connection never writes";
  EXPECT_EQ(iPages, oVolumes->CurrentSize());
  EXPECT_EQ(iPages - iFree, oVolumes->UsedSize());
  EXPECT_EQ(oDatabase->StateInfo()->DataTotal(), oArea->Size(0)) << "the main page says the same";
}

TEST(SQLiteAreas, LogVolumeTellsWhatHasBeenCopied) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db", "PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0");
  InsertRows(oApplication, 30);
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  const auto Volume = [&] { return oDatabase->LogArea()->Volumes()->Item(1); };
  const auto Size = [&](int i) { return oDatabase->LogArea()->Size(i); };
  ASSERT_TRUE(oDatabase->LogArea()->Refresh());
  const int iFrames = int((std::filesystem::file_size(oFolder / "a.db-wal") - 32) / (24 + 4096));
  const std::string sFrames = std::to_string(iFrames);
  EXPECT_EQ(oFolder / "a.db-wal", Volume()->Name());
  EXPECT_EQ(sFrames + " frames", Volume()->Info1());
  EXPECT_EQ("0 of " + sFrames + " copied into the database file; the file has room for " + sFrames, Volume()->Info2());
  EXPECT_EQ(iFrames, Volume()->UsedSize());
  EXPECT_EQ(oDatabase->StateInfo()->LogTotal(), Size(0));
  EXPECT_EQ(Size(0), Size(2) + Size(3));
  EXPECT_EQ(iFrames, Size(3));
  EXPECT_EQ(iFrames, Size(4));

  // A reader holds the checkpoint up half way.
  Application oReader(oFolder / "a.db", "BEGIN; SELECT count(*) FROM t");
  InsertRows(oApplication, 10);
  const int iCopied = oApplication.Number("PRAGMA wal_checkpoint(PASSIVE)", 2);
  ASSERT_EQ(iFrames, iCopied);
  EXPECT_EQ(0u, Volume()->Info2().find(sFrames + " of " + std::to_string(Size(3)) + " copied")) << Volume()->Info2();
  EXPECT_EQ(Size(3) - iFrames, Size(4));
  EXPECT_EQ(Size(3), oDatabase->StateInfo()->LogUsed()) << "none of it is free yet";
  oReader.Run("COMMIT");
  oApplication.Run("PRAGMA wal_checkpoint(PASSIVE)");
  EXPECT_EQ(0u, Volume()->Info2().find("all copied into the database file;")) << Volume()->Info2();
  EXPECT_EQ(0, Size(3));
  EXPECT_EQ(0, Size(4));
  EXPECT_EQ(Size(0), Size(2));
}

TEST(SQLiteAreas, SettingsSayWhatBecomesOfTheLog) {
  Folder oFolder;
  { Application(oFolder / "a.db", "CREATE TABLE t(v)"); }
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  EXPECT_EQ("1 2 2", Codes(*oDatabase)) << "a journal holds what changes have replaced, not the changes";
  EXPECT_EQ(0, oDatabase->LogArea()->Volumes()->Count());
  Application oApplication(oFolder / "a.db", "PRAGMA journal_mode=WAL");
  EXPECT_EQ("1 2 1", Codes(*oDatabase));
  EXPECT_EQ("nothing to copy; the file has room for 0", oDatabase->LogArea()->Volumes()->Item(1)->Info2());
  oDatabase->Shutdown();
  EXPECT_EQ("0 0 0", Codes(*oDatabase));
}

TEST(SQLiteAreas, WithoutFiguresTheFileSystemTellsTheSize) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db");
  InsertRows(oApplication, 20);
  const int iPages = oApplication.Number("PRAGMA page_count");
  const auto oDatabase = OpenDatabase(oFolder / "a.db", {.BusyTimeout = std::chrono::milliseconds(1)});
  const auto ExpectSize = [&](const std::string& sInfo) {
    const auto oVolume = oDatabase->DataArea()->Volumes()->Item(1);
    EXPECT_EQ(iPages, oVolume->Size());
    EXPECT_EQ(sInfo, oVolume->Info2());
    EXPECT_EQ(-1, oVolume->IOCount2());
  };
  oApplication.Run("BEGIN EXCLUSIVE");
  EXPECT_FALSE(oDatabase->DataArea()->Refresh());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("locked"));
  EXPECT_FALSE(oDatabase->LogArea()->Refresh());
  ExpectSize("4096 bytes a page, rollback journal");
  oApplication.Run("COMMIT");
  EXPECT_TRUE(oDatabase->DataArea()->Refresh());

  oDatabase->Shutdown();
  EXPECT_TRUE(oDatabase->DataArea()->Refresh()) << "closed by the user is no failure";
  ExpectSize("closed");

  oDatabase->Online();
  std::filesystem::remove(oFolder / "a.db");
  EXPECT_FALSE(oDatabase->DataArea()->Refresh());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("no such file"));
  EXPECT_EQ(0, oDatabase->DataArea()->Volumes()->CurrentSize());
}
