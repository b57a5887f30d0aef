#include "tests/support/Told.h"
#include "zelwbr3/pages/monitor/PageInfoActivity.h"
#include "zelwbr3/pages/monitor/PageInfoCaches.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

const std::string Sizes = R"json("IOBufferCacheSize": 80000, "DataCacheSize": 60000, "ConverterSize": 5000.5,
    "CatalogCacheSize": 1234567, "AWEMappedSize": 50000, "AWEUnmappedSize": 700, "AWEMemorySize": 512)json";
const std::string Parameters = R"json("IOBufferCacheParam": {"Name": " CACHE_SIZE ", "Group": 0},
    "DataCacheParam": {"Name": "DATA_CACHE", "Group": 1}, "RollbackCacheParam": {"Name": "ROLLBACK", "Group": 2},
    "CatalogCacheParam": {"Name": "CATALOG", "Group": 3}, "AWEParam": {"Name": "USE_AWE", "Group": 7},
    "AWEMemoryParam": {"Name": "AWE_MEMORY", "Group": -1})json";

constexpr int Newer = 0x07040000;
constexpr int Older = 0x0703FFFF;

/// The caches of a kernel on their page: further members of the instance, of
/// its caches and of the recording.
struct Caches : Told {
  explicit Caches(int iVersion, const std::string& sMore = "", const std::string& sCaches = "",
                  const std::string& sRecording = "")
      : Told("\"Version\": {\"Number\": " + std::to_string(iVersion) + "}, " + sMore + "\"Caches\": {" + Sizes + ", " +
                 Parameters + (sCaches.empty() ? "" : ", " + sCaches) + "}",
             sRecording) {
    Show(Browser.PageInfoCaches());
  }
};

TEST(MonitorCaches, NewerKernelPartsItsBufferCache) {
  Caches oTold(Newer, "", "\"RollbackCacheSize\": 0, \"SequenceCacheSize\": -1");
  EXPECT_EQ(oTold.Rows("tabCacheSizes"),
            "I/O Buffer Cache|80,000 KB\n"
            "    Data Cache|60,000 KB\n"
            "    Converter|5,001 KB\n"
            "    Misc.|15,000 KB\n"
            "    Catalog Cache|1,234,567 KB\n"
            "    Rollback Cache|0 KB\n");
  EXPECT_EQ(oTold.Rows("tabCacheParams"), "CACHE_SIZE|80,000 KB\nROLLBACK|0 KB\nCATALOG|1,234,567 KB\n");
  EXPECT_TRUE(oTold.IsShown("divFrmCnt"));
  EXPECT_FALSE(oTold.IsShown("divFrmWait"));
}

TEST(MonitorCaches, AWEMemoryIsPartOfTheBufferCache) {
  Caches oTold(Newer, "\"PlatformType\": 1, ", "\"AWEEnabled\": true");
  // What the recording does not name, the rollback cache, is a size of 0.
  EXPECT_EQ(oTold.Rows("tabCacheSizes"),
            "I/O Buffer Cache|80,700 KB\n"
            "    Data Cache|60,000 KB\n"
            "    AWE mapped|50,000 KB\n"
            "    AWE unmapped|700 KB\n"
            "    Converter|5,001 KB\n"
            "    Misc.|25,000 KB\n"
            "    Catalog Cache|1,234,567 KB\n"
            "    Rollback Cache|0 KB\n"
            "    Sequence Cache|0 KB\n");
  EXPECT_EQ(oTold.Rows("tabCacheParams"),
            "CACHE_SIZE|80,000 KB\nROLLBACK|0 KB\nCATALOG|1,234,567 KB\nUSE_AWE|YES\nAWE_MEMORY|512 KB\n");
  EXPECT_EQ(oTold.Find("PARAMUSE_AWE")->className(), "zelTblCellParNon");
  EXPECT_EQ(oTold.Find("PARAMCATALOG")->className(), "zelTblCellParInf");
}

TEST(MonitorCaches, OlderKernelHasSeparateCaches) {
  Caches oTold(Older, "\"PlatformType\": 1, ", "\"RollbackCacheSize\": -1, \"SequenceCacheSize\": 8");
  EXPECT_EQ(oTold.Rows("tabCacheSizes"),
            "Data Cache|60,000 KB\nConverter Cache|5,001 KB\nCatalog Cache|1,234,567 KB\nSequence Cache|8 KB\n");
  EXPECT_EQ(oTold.Rows("tabCacheParams"),
            "DATA_CACHE|60,000 KB\nROLLBACK|-1 KB\nCATALOG|1,234,567 KB\nUSE_AWE|NO\nAWE_MEMORY|512 KB\n");
}

TEST(MonitorCaches, AccessesWithCountersThatAreMissingZeroOrLarge) {
  const std::string sAccesses = R"json("DataCacheAccesses": [1234567, 1200000, 34567], "SQLDataAccesses": [0, -1, 7],
      "OMSDataAccesses": [-1, 5, 5], "HistoryUndoAccesses": [-2, 0, 0], "CatalogCacheAccesses": [3, 1, -2],
      "RollbackCacheAccesses": [10, 10, 0], "ConverterCacheAccesses": [10, 5, 5])json";
  Caches oNewer(Newer, "", sAccesses);
  EXPECT_EQ(oNewer.Rows("tabCacheAccesses"),
            "Data Cache|1,234,567|1,200,000|34,567|97.20%\n"
            "    SQL Data|0|~|7|100.00%\n"
            "    Catalog Cache|3|1|-2|33.33%\n");
  EXPECT_FALSE(oNewer.IsShown("tabCacheUsage"));
  EXPECT_EQ(oNewer.Rows("tabCacheUsage"), "");

  Caches oOlder(Older, "\"InstanceType\": 1, ", sAccesses);
  EXPECT_EQ(oOlder.Rows("tabCacheAccesses"),
            "Entire Data Cache|1,234,567|1,200,000|34,567|97.20%\n"
            "    SQL Data|0|~|7|100.00%\n"
            "    Rollback Cache|10|10|0|100.00%\n"
            "    Converter Cache|10|5|5|50.00%\n"
            "    Catalog Cache|3|1|-2|33.33%\n");
}

TEST(MonitorCaches, AnObjectStoreSharesTheDataCache) {
  Caches oTold(Newer, "\"InstanceType\": 1, ",
               R"json("DataCacheUsedSize": 30000, "SQLDataSize": 15000, "OMSDataSize": -1, "HistoryUndoSize": 0,
                            "OMSHistorySize": 60000)json");
  oTold.Browser.PreferredUnit(1);  // MB
  oTold.Show(oTold.Browser.PageInfoCaches());
  EXPECT_TRUE(oTold.IsShown("tabCacheUsage"));
  EXPECT_EQ(oTold.Rows("tabCacheUsage"),
            "Entire Data Cache|29.30 MB|50.00%\n"
            "    SQL Data|14.65 MB|25.00%\n"
            "    History/Undo|0.00 MB|0.00%\n"
            "    OMS History|58.59 MB|100.00%\n");
}

TEST(MonitorCaches, AClickOpensTheParameterOfExactlyThatName) {
  Caches oTold(Newer, "\"Parameters\": [{\"Name\": \"CACHE_SIZE\", \"Exists\": true}], ");
  EXPECT_EQ(oTold.Text("LocaleThousendGroupingSymbole"), ",");
  oTold.Lines();
  const auto oPage = oTold.Browser.PageInfoCaches();
  EXPECT_FALSE(oPage->HandleOnClick("PARA"));
  EXPECT_FALSE(oPage->HandleOnClick(""));
  EXPECT_EQ(oTold.Lines(), "");
  oTold.Click("PARAMCACHE_SIZE");
  EXPECT_EQ(oTold.Lines(), "begin\npage Parameter\ncomplete\n");

  Told oNone(R"json("Version": {"Number": 67108864}, "Caches": {"RollbackCacheSize": -1, "CatalogCacheSize": 7})json");
  oNone.Show(oNone.Browser.PageInfoCaches());
  oNone.Lines();
  EXPECT_EQ(oNone.Rows("tabCacheParams"), "|0 KB\n|~\n|7 KB\n") << "neither cache nor parameter, or no parameter";
  oNone.Click("PARAM");
  EXPECT_EQ(oNone.Lines(), "");
}

TEST(MonitorFigures, ThatCannotBeRefreshedLeaveTheTablesEmpty) {
  Caches oTold(Newer, "", "", "\"fails\": [\"Caches.Refresh\", \"Activity.Refresh\"]");
  EXPECT_EQ(oTold.Rows("tabCacheSizes") + oTold.Rows("tabCacheParams"), "");
  EXPECT_TRUE(oTold.IsShown("divFrmCnt"));
  oTold.Show(oTold.Browser.PageInfoActivity());
  EXPECT_EQ(oTold.Rows("tabLog"), "");
  const std::string sError = "box Error [exclamation ok]: -24988 SQL error -> ok\npage Info";
  EXPECT_EQ(oTold.Lines(), sError + "Caches\n" + sError + "Activity\n");
}

TEST(MonitorActivity, CountersStandInPairs) {
  std::string sCounters;
  for (int i = 0; i < 25; ++i) sCounters += (i == 0 ? "" : ", ") + std::to_string(i == 3 ? -1 : i == 5 ? 0 : 1000 + i);
  const auto Activity = [&](int iVersion) {
    return "\"Version\": {\"Number\": " + std::to_string(iVersion) + "}, \"Activity\": {\"SQLCounter\": [" + sCounters +
           R"json(], "IOCounter": [1, 1234567], "LockCounter": [1, 2, 3, 4, 5, 6, 7, 8, 9],
           "LogCounter": [1, 2, 3, 4]})json";
  };
  Told oTold(Activity(0x07030000));
  oTold.Show(oTold.Browser.PageInfoActivity());
  EXPECT_EQ(oTold.Rows("tabCommands"),
            "SQL Commands|1,000|Creates|1,001\n"
            "Prepares|1,002|Alters|~\n"
            "Executes|1,004|Drops|0\n"
            "Rollbacks|1,006|DB Procedure Calls (External)|1,008\n"
            "Commits|1,007|DB Procedure Calls (Internal)|1,009\n"
            "Updates|1,010|Deletes|1,013\n"
            "    Rows Read|1,011|    Rows Read|1,014\n"
            "    Rows Changed|1,012|    Rows Deleted|1,015\n"
            "Selects and Fetches|1,016|Inserts|1,019\n"
            "    Rows Read|1,017|    Rows Added|1,020\n"
            "    Qualified Rows|1,018||\n");
  EXPECT_EQ(oTold.Rows("tabIO"), "Physical Reads|1|Logical Reads|1,234,567\nPhysical Writes|~|Logical Writes|~\n");
  EXPECT_EQ(oTold.Rows("tabLock"),
            "Available Entries|1|Row Locks|4\n"
            "    Maximum Set|2|Table Locks|5\n"
            "    Average Set|3||\n"
            "Lock Owner|6|Collisions|8\n"
            "Lock Requestor|7|Escalations|9\n");
  EXPECT_EQ(oTold.Rows("tabLog"),
            "Log Pages Written|1|Group Commits|2\nWait for Log Writer|3|Log I/O Queue Overflow|4\n");
  EXPECT_EQ(oTold.Rows("tabScanSort"), "Table Scans|1,021|Cache Sorts|1,022\nIndex Scans|1,023|Row Sorts|1,024\n");

  Told oOlder(Activity(0x0702FFFF));
  oOlder.Show(oOlder.Browser.PageInfoActivity());
  EXPECT_EQ(oOlder.Rows("tabLock"),
            "Maximum Entries Set|2|Average Entries Set|3\nRow Locks|4|Table Locks|5\nCollisions|8|Escalations|9\n");
}

}  // namespace
}  // namespace ZELWbr3::Testing
