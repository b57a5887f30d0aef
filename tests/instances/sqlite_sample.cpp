#include "instances/sqlite/SQLiteDatabase.h"
#include "instances/sqlite/SampleDatabase.h"
#include "tests/instances/SQLiteFiles.h"

#include <cstdlib>
#include <set>

using namespace SQLiteFiles;
using namespace ZELWbr3::SQLite;

namespace {

std::set<std::string> Names(const std::string& sFolder) {
  std::set<std::string> names;
  for (const auto& oEntry : std::filesystem::directory_iterator(sFolder)) names.insert(oEntry.path().filename());
  return names;
}

/// Sets an environment variable as long as it lives.
class Variable {
 public:
  Variable(const char* sName, const char* sValue) : m_sName(sName) {
    if (const char* sOld = std::getenv(sName)) m_oOld = sOld;
    sValue ? setenv(sName, sValue, 1) : unsetenv(sName);
  }
  ~Variable() { m_oOld ? setenv(m_sName, m_oOld->c_str(), 1) : unsetenv(m_sName); }

 private:
  const char* m_sName;
  std::optional<std::string> m_oOld;
};

}  // namespace

TEST(SQLiteSample, HasSomethingToShowEverywhere) {
  Folder oFolder;
  const std::string sPath = oFolder / "new/folder/sample.db";
  std::vector<int> steps;
  MakeSample(sPath, [&](int iPercent) { steps.push_back(iPercent); });
  EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
  EXPECT_EQ(0, steps.front());
  EXPECT_EQ(100, steps.back());
  EXPECT_EQ((std::set<std::string>{"sample.db", "sample.db-wal", "sample.db.lock"}), Names(oFolder / "new/folder"));
  {
    const auto oDatabase = OpenDatabase(sPath);
    const auto oState = oDatabase->StateInfo();
    EXPECT_TRUE(oState->InfoAvailable());
    EXPECT_LT(oState->DataUsed(), oState->DataTotal());
    EXPECT_GT(oState->LogUsed(), 100);
    EXPECT_LT(oState->LogPercent(), 90);
  }
  Application oApplication(sPath);
  EXPECT_EQ("ok", oApplication.Text("PRAGMA integrity_check"));
  EXPECT_EQ("0", oApplication.Text("SELECT count(*) FROM pragma_foreign_key_check"));
  EXPECT_GT(oApplication.Number("SELECT count(*) FROM sales_order_line"), 100000);
  EXPECT_GT(oApplication.Number("SELECT count(*) FROM stock_to_reorder"), 0);
  EXPECT_GT(oApplication.Number("SELECT count(*) FROM sqlite_schema WHERE type = 'trigger'"), 0);
}

TEST(SQLiteSample, OfSeveralMakersOneMakesIt) {
  Folder oFolder;
  const std::string sPath = oFolder / "sample.db";
  WriteFile(sPath + ".new", "what a maker left that died");
  WriteFile(sPath + ".new-wal", "its log");
  WriteFile(sPath + "-shm", "an index without a database");
  const auto make = [&] {
    bool bMade = false;
    MakeSample(sPath, [&](int) { bMade = true; });
    return std::string(bMade ? "made" : "waited") + " " +
           std::to_string(OpenDatabase(sPath)->StateInfo()->InfoAvailable());
  };
  Process oFirst(make);
  Process oSecond(make);
  Process oThird(make);
  EXPECT_EQ((std::multiset<std::string>{"made 1", "waited 1", "waited 1"}),
            (std::multiset<std::string>{oFirst.Result(), oSecond.Result(), oThird.Result()}));
  EXPECT_EQ("ok", Application(sPath).Text("PRAGMA integrity_check"));
  EXPECT_FALSE(Names(oFolder.Path()).count("sample.db.new"));
}

TEST(SQLiteSample, BrokenOffOrRefusedLeavesNothing) {
  Folder oFolder;
  const std::string sPath = oFolder / "sample.db";
  struct Stop {};
  EXPECT_THROW(MakeSample(sPath,
                          [](int iPercent) {
                            if (iPercent > 50) throw Stop();
                          }),
               Stop);
  EXPECT_EQ(std::set<std::string>{"sample.db.lock"}, Names(oFolder.Path()));

  WriteFile(sPath, "the user's own");
  MakeSample(sPath, [](int) { FAIL() << "there is a file already"; });
  EXPECT_EQ("the user's own", oFolder.Contents()["sample.db"]);

  chmod(oFolder.Path().c_str(), 0555);
  const std::string sError = AsOrdinaryUser([&] {
    MakeSample(oFolder / "other.db");
    return std::string();
  });
  EXPECT_NE(std::string::npos, sError.find(oFolder / "other.db")) << sError;
}

TEST(SQLiteSample, StandsInTheUsersDataFolder) {
  const struct {
    const char* sData;
    const char* sHome;
    const char* sPath;
  } cases[] = {{"/data", "/home/a", "/data/zelwbr3/sample.db"},
               {"relative", "/home/a", "/home/a/.local/share/zelwbr3/sample.db"},
               {"", "/home/a", "/home/a/.local/share/zelwbr3/sample.db"},
               {nullptr, "/home/a", "/home/a/.local/share/zelwbr3/sample.db"}};
  for (const auto& c : cases) {
    const Variable oData("XDG_DATA_HOME", c.sData);
    const Variable oHome("HOME", c.sHome);
    EXPECT_EQ(c.sPath, SamplePath());
  }
  const Variable oData("XDG_DATA_HOME", nullptr);
  const Variable oHome("HOME", nullptr);
  EXPECT_EQ('/', SamplePath()[0]);
}
