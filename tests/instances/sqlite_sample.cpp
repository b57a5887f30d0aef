#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/instances/sqlite/sample/SampleDatabase.h"

using namespace SQLiteFiles;
using ZELWbr3::SQLite::MakeSample;

TEST(SQLiteSample, HasSomethingToShowEverywhere) {
  Folder oFolder;
  const std::string sPath = oFolder / "new/folder/sample.db";
  std::vector<int> steps;
  MakeSample(sPath, [&](int iPercent) { steps.push_back(iPercent); });
  EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()) && steps.front() == 0 && steps.back() == 100);
  EXPECT_EQ((std::set<std::string>{"sample.db", "sample.db-wal", "sample.db.lock"}), Names(oFolder / "new/folder"));
  const auto oState = OpenDatabase(sPath)->StateInfo();
  EXPECT_LT(oState->DataUsed(), oState->DataTotal());
  EXPECT_GT(oState->LogUsed(), 100);
  EXPECT_LT(oState->LogPercent(), 90);
  Application oApplication(sPath);
  EXPECT_EQ("ok", oApplication.Text("PRAGMA integrity_check"));
  EXPECT_EQ("0", oApplication.Text("SELECT count(*) FROM pragma_foreign_key_check"));
  EXPECT_GT(oApplication.Number("SELECT count(*) FROM sales_order_line"), 100000);
}

TEST(SQLiteSample, OfSeveralMakersOneMakesIt) {
  Folder oFolder;
  const std::string sPath = oFolder / "sample.db";
  for (const char* sLeft : {".new", ".new-wal", "-shm"}) WriteFile(sPath + sLeft, "what a maker left that died");
  const auto make = [&] {
    bool bMade = false;
    MakeSample(sPath, [&](int) { bMade = true; });
    return std::string(bMade ? "made " : "waited ") + std::to_string(OpenDatabase(sPath)->StateInfo()->InfoAvailable());
  };
  Process oMakers[] = {Process(make), Process(make), Process(make)};
  std::multiset<std::string> results;
  for (const Process& oMaker : oMakers) results.insert(oMaker.Result());
  EXPECT_EQ((std::multiset<std::string>{"made 1", "waited 1", "waited 1"}), results);
  EXPECT_EQ("ok", Application(sPath).Text("PRAGMA integrity_check"));
  EXPECT_FALSE(Names(oFolder.Path()).count("sample.db.new"));
}

TEST(SQLiteSample, BrokenOffOrRefusedLeavesNothing) {
  Folder oFolder;
  const std::string sPath = oFolder / "sample.db";
  EXPECT_THROW(MakeSample(sPath, [](int iPercent) { iPercent > 50 ? throw 1 : 0; }), int);
  EXPECT_EQ(std::set<std::string>{"sample.db.lock"}, Names(oFolder.Path()));

  WriteFile(sPath, "the user's own");
  MakeSample(sPath, [](int) { FAIL() << "there is a file already"; });
  EXPECT_EQ("the user's own", ReadFile(sPath));

  chmod(oFolder.Path().c_str(), 0555);
  const std::string sError = AsOrdinaryUser([&] {
    MakeSample(oFolder / "other.db");
    return std::string();
  });
  EXPECT_NE(std::string::npos, sError.find(oFolder / "other.db")) << sError;
}

TEST(SQLiteSample, StandsInTheUsersDataFolder) {
  for (const auto& [sData, sPath] : {std::pair("/data", "/data/zelwbr3/sample.db"),
                                     {"relative", "/home/a/.local/share/zelwbr3/sample.db"},
                                     {"", "/home/a/.local/share/zelwbr3/sample.db"}}) {
    EXPECT_EQ(sPath, Process([&] {
                       setenv("XDG_DATA_HOME", sData, 1);
                       setenv("HOME", "/home/a", 1);
                       return ZELWbr3::SQLite::SamplePath();
                     }).Result());
  }
  EXPECT_EQ('/', Process([] {
                   unsetenv("XDG_DATA_HOME");
                   unsetenv("HOME");
                   return ZELWbr3::SQLite::SamplePath();
                 }).Result()[0]);
}
