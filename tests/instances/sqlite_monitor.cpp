#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/testing/Rows.h"

#include <optional>
#include <regex>

using namespace ZELWbr3::Testing;

using namespace SQLiteFiles;

namespace {

class SQLiteMonitor : public SQLiteTest {
 protected:
  /// The lock of a process as its session tells it; "" when it is not listed.
  std::string LockOf(const std::string& sProcess) {
    const auto oSessions = m_oDatabase->Sessions();
    EXPECT_TRUE(oSessions->Refresh());
    for (int i = 1; i <= oSessions->Count(); ++i) {
      if (oSessions->Item(i)->Field1() == sProcess) return oSessions->Item(i)->Field5();
    }
    return "";
  }
};

/// A process with a connection of its own that runs statements when told to.
class Neighbour : public Servant {
 public:
  explicit Neighbour(const std::string& sPath)
      : Servant([&, oApplication = std::shared_ptr<Application>()](const std::string& sSQL) mutable {
          if (!oApplication) oApplication = std::make_shared<Application>(sPath);
          return std::string(oApplication->Try(sSQL) == SQLITE_OK ? "done" : "failed");
        }) {}
  void Run(const std::string& sSQL) { ASSERT_EQ("done", Ask(sSQL)) << sSQL; }
};

}  // namespace

TEST_F(SQLiteMonitor, SessionsSayWhoHoldsTheFileAndWhatIsLocked) {
  { Application(Path(), "CREATE TABLE t(v)"); }
  Neighbour oNeighbour(Path());
  std::optional<Neighbour> oOther(std::in_place, Path());
  Open();
  oNeighbour.Run("SELECT * FROM t");
  oOther->Run("SELECT * FROM t");
  oOther.reset();
  oNeighbour.Run("ATTACH '" + Path() + "' AS again; SELECT * FROM again.t");
  ASSERT_EQ(2, m_oDatabase->Sessions()->Count()) << "a process that holds it twice is one";
  EXPECT_EQ(2, State()->SessionsUsed());
  EXPECT_EQ(2 * 100 / State()->SessionsMax(), State()->SessionPercent());
  oNeighbour.Run("DETACH again");
  const auto oSession = m_oDatabase->Sessions()->Item(2);  // the younger process has the higher number
  EXPECT_EQ(oNeighbour.Number(), oSession->Field1());
  EXPECT_EQ(std::filesystem::read_symlink("/proc/self/exe").filename(), oSession->Field2());
  EXPECT_TRUE(std::regex_match(oSession->Field4(), std::regex("20\\d\\d-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d")));

  // The last figure: processes that have locks, -1 when that cannot be told.
  using Step = std::tuple<const char*, const char*, int>;
  for (const auto& [sSQL, sLock, iLocking] :
       {Step("SELECT 1", "none", 0), Step("BEGIN; SELECT * FROM t", "shared", 1),
        Step("INSERT INTO t VALUES(1)", "reserved", 1), Step("COMMIT; BEGIN EXCLUSIVE", "exclusive", -1),
        Step("COMMIT; PRAGMA journal_mode=WAL; BEGIN; SELECT * FROM t", "shared, reads", 2),
        Step("INSERT INTO t VALUES(1)", "shared, writes the log, reads", 2)}) {
    oNeighbour.Run(sSQL);
    EXPECT_EQ(sLock, LockOf(oNeighbour.Number()));
    EXPECT_EQ(iLocking, m_oDatabase->Activity()->LockCounter(5)) << sLock;
  }
  m_oDatabase->Shutdown();
  EXPECT_EQ(1, m_oDatabase->Sessions()->Count()) << "the list does not depend on this connection";
}

TEST_F(SQLiteMonitor, ActivityCountsWhatTheConnectionDoes) {
  Run("CREATE TABLE t(v); CREATE VIEW plain AS SELECT v FROM t; CREATE VIEW sorted AS SELECT v FROM t ORDER BY v;"
      "INSERT INTO t VALUES(1), (2), (3)");
  Open();
  using Counters = std::vector<double>;
  const auto Look = [&] {
    Counters oCounters;
    const auto oActivity = m_oDatabase->Activity();
    EXPECT_TRUE(oActivity->Refresh());
    for (int i = 0; i < 25; ++i) oCounters.push_back(oActivity->SQLCounter(i));
    return oCounters;
  };
  // What reading a view adds; each look adds something as well.
  const auto Gain = [&](const std::string& sView) {
    const Counters oBefore = Look();
    EXPECT_EQ(3u, ReadTable(*m_oDatabase, "", sView).size());
    Counters oGain = Look();
    std::ranges::transform(oGain, oBefore, oGain.begin(), std::minus<>());
    return oGain;
  };
  Gain("sorted");
  const Counters oPlain = Gain("plain");
  const Counters oSorted = Gain("sorted");
  EXPECT_EQ(oPlain[24] + 1, oSorted[24]) << "sorts";
  EXPECT_EQ(oPlain[0], oSorted[0]);
  EXPECT_GE(oSorted[18], 3) << "rows delivered";
  EXPECT_GE(oSorted[21], 1) << "statements that scan a table";
  EXPECT_GE(oSorted[16], 2) << "the view, and looking up what it is";
  EXPECT_GT(oSorted[0], oSorted[16]) << "not only queries";
  EXPECT_EQ(oSorted[0], oSorted[2]) << "each is prepared once";
  EXPECT_GE(oSorted[7], 1) << "a look is a transaction";

  const auto oActivity = m_oDatabase->Activity();
  EXPECT_GT(oActivity->IOCounter(1), oActivity->IOCounter(0)) << "pages in the cache are not read";
  for (const int i : {-1, 9, 1000}) EXPECT_EQ(-2, oActivity->IOCounter(i) + oActivity->LockCounter(i));
  m_oDatabase->Shutdown();
  EXPECT_FALSE(m_oDatabase->Activity()->Refresh());
  EXPECT_EQ(-1, m_oDatabase->Activity()->SQLCounter(0));
}

TEST_F(SQLiteMonitor, CachesAreThoseOfTheConnection) {
  Run("PRAGMA page_size=1024; PRAGMA default_cache_size=300");
  InsertRows(App(), 10);
  const auto oCaches = Open().Caches();
  const auto oState = State();
  ASSERT_TRUE(oCaches->Refresh());
  EXPECT_EQ(300, oCaches->DataCacheSize()) << "KB, and a page has one";
  EXPECT_EQ(300, oState->CacheTotal());
  EXPECT_GT(oState->CacheUsed(), 0);
  EXPECT_GT(oCaches->DataCacheUsedSize(), 0);
  EXPECT_LE(oCaches->DataCacheUsedSize(), 300);
  EXPECT_LT(oCaches->RollbackCacheSize(), 0) << "there is no such cache";
  EXPECT_EQ(oCaches->DataCacheAccesses(0), oCaches->DataCacheAccesses(1) + oCaches->DataCacheAccesses(2));
  EXPECT_GT(oCaches->DataCacheAccesses(2), 0);
  EXPECT_EQ("300", oCaches->DataCacheParam()->Value());
  for (int i = 0; i < 50; ++i) State()->DataTotal();
  EXPECT_GT(State()->CacheHitRate(), oState->CacheHitRate());
  EXPECT_LE(State()->CacheHitRate(), 100);
  m_oDatabase->Shutdown();
  EXPECT_FALSE(m_oDatabase->Caches()->Refresh());
  ExpectError("online");
  EXPECT_LT(m_oDatabase->Caches()->DataCacheSize(), 0);
}

TEST_F(SQLiteMonitor, StatementsAreCountedByTheirText) {
  Run("CREATE TABLE t(v); INSERT INTO t VALUES(3), (1), (2)");
  Open();
  for (int i = 0; i < 3; ++i) ReadTable(*m_oDatabase, "main", "t");
  Rows oFound = ReadView(*m_oDatabase, "STATEMENTS");
  std::erase_if(oFound, [](const auto& oRow) { return oRow[0].find("* FROM \"main\".\"t\" ORDER") == oRow[0].npos; });
  ASSERT_EQ(1u, oFound.size());
  EXPECT_EQ("3 runs 9 rows 6 scan steps 3 prepares", oFound[0][1] + " runs " + oFound[0][2] + " rows " + oFound[0][5] +
                                                         " scan steps " + oFound[0][8] + " prepares");
}

// The page of system tables has one link a table; each of them opens, or says
// that a database file has no such table.
TEST_F(SQLiteMonitor, SystemTablesAnswerToTheNamesOfThePage) {
  Run("CREATE TABLE t(id INTEGER PRIMARY KEY AUTOINCREMENT, p REFERENCES t, n NOT NULL UNIQUE);"
      "INSERT INTO t VALUES(7, 7, 1); ANALYZE");
  Open();
  const std::string sPage = ReadFile(std::string(ZELWBR3_SOURCE_DIR) + "/html/SysDD76.htm");
  const std::regex oLink("id=\"ITEM_([^\"]*)\"");
  std::set<std::string> opened;
  for (std::sregex_iterator it(sPage.begin(), sPage.end(), oLink), end; it != end; ++it) {
    const std::string sName = it->str(1);
    if (Table(*m_oDatabase, "SYSDD", sName)->Open()) {
      opened.insert(sName);
    } else {
      ExpectError("SYSDD." + sName + ": a SQLite database");
    }
  }
  EXPECT_EQ((std::set<std::string>{"COLUMNS", "CONSTRAINTS", "FOREIGNKEYCOLUMNS", "FOREIGNKEYS", "FUNCTIONS",
                                   "INDEXCOLUMNS", "INDEXES", "INDEXSTATISTICS", "SCHEMAS", "SEQUENCES", "TABLES",
                                   "TABLESTATISTICS", "TRIGGERS", "VIEWS"}),
            opened);
}
