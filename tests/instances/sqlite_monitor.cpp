#include "tests/instances/SQLiteRows.h"

#include <algorithm>
#include <optional>
#include <set>

using namespace SQLiteFiles;

namespace {

/// Field5 of the session of a process; "" when it is not listed.
std::string LockOf(ZELLib3::Database& oDatabase, const std::string& sProcess) {
  const auto oSessions = oDatabase.Sessions();
  EXPECT_TRUE(oSessions->Refresh());
  for (int i = 1; i <= oSessions->Count(); ++i) {
    if (oSessions->Item(i)->Field1() == sProcess) return oSessions->Item(i)->Field5();
  }
  return "";
}

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

TEST(SQLiteSessions, SayWhoHoldsTheFileAndWhatIsLocked) {
  Folder oFolder;
  { Application(oFolder / "a.db", "CREATE TABLE t(v)"); }
  Neighbour oNeighbour(oFolder / "a.db");
  std::optional<Neighbour> oOther(std::in_place, oFolder / "a.db");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  oNeighbour.Run("SELECT * FROM t");
  oOther->Run("SELECT * FROM t");
  oOther.reset();
  oNeighbour.Run("ATTACH '" + oFolder / "a.db" + "' AS again; SELECT * FROM again.t");
  ASSERT_EQ(2, oDatabase->Sessions()->Count()) << "a process that holds it twice is one";
  EXPECT_EQ(2, oDatabase->StateInfo()->SessionsUsed());
  EXPECT_EQ(2 * 100 / oDatabase->StateInfo()->SessionsMax(), oDatabase->StateInfo()->SessionPercent());
  oNeighbour.Run("DETACH again");
  const auto oSession = oDatabase->Sessions()->Item(2);  // the younger process has the higher number
  EXPECT_EQ(oNeighbour.Number(), oSession->Field1());
  EXPECT_EQ(std::filesystem::read_symlink("/proc/self/exe").filename(), oSession->Field2());
  EXPECT_TRUE(std::regex_match(oSession->Field4(), std::regex("20\\d\\d-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d")));

  EXPECT_EQ("none", LockOf(*oDatabase, oNeighbour.Number()));
  oNeighbour.Run("BEGIN; SELECT * FROM t");
  EXPECT_EQ("shared", LockOf(*oDatabase, oNeighbour.Number()));
  oNeighbour.Run("INSERT INTO t VALUES(1)");
  EXPECT_EQ("reserved", LockOf(*oDatabase, oNeighbour.Number()));
  EXPECT_EQ(1, oDatabase->Activity()->LockCounter(5)) << "one process has locks";
  oNeighbour.Run("COMMIT; BEGIN EXCLUSIVE");
  EXPECT_EQ("exclusive", LockOf(*oDatabase, oNeighbour.Number()));
  oNeighbour.Run("COMMIT; PRAGMA journal_mode=WAL; BEGIN; SELECT * FROM t");
  EXPECT_EQ("shared, reads", LockOf(*oDatabase, oNeighbour.Number()));
  oNeighbour.Run("INSERT INTO t VALUES(1)");
  EXPECT_EQ("shared, writes the log, reads", LockOf(*oDatabase, oNeighbour.Number()));
  oDatabase->Shutdown();
  EXPECT_EQ(1, oDatabase->Sessions()->Count()) << "the list does not depend on this connection";
}

TEST(SQLiteActivity, CountsWhatTheConnectionDoes) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db",
                           "CREATE TABLE t(v); CREATE VIEW plain AS SELECT v FROM t;"
                           "CREATE VIEW sorted AS SELECT v FROM t ORDER BY v;"
                           "INSERT INTO t VALUES(1), (2), (3)");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  using Counters = std::vector<double>;
  const auto Look = [&] {
    Counters oCounters;
    const auto oActivity = oDatabase->Activity();
    EXPECT_TRUE(oActivity->Refresh());
    for (int i = 0; i < 25; ++i) oCounters.push_back(oActivity->SQLCounter(i));
    return oCounters;
  };
  // What reading a view adds; each look adds something as well.
  const auto Gain = [&](const std::string& sView) {
    const Counters oBefore = Look();
    EXPECT_EQ(3u, ReadTable(*oDatabase, "", sView).size());
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

  const auto oActivity = oDatabase->Activity();
  EXPECT_GT(oActivity->IOCounter(1), oActivity->IOCounter(0)) << "pages in the cache are not read";
  for (const int i : {-1, 4, 1000}) {
    EXPECT_EQ(-1, oActivity->IOCounter(i));
    EXPECT_EQ(-1, oActivity->LockCounter(i == 4 ? 9 : i));
  }
  oDatabase->Shutdown();
  EXPECT_FALSE(oDatabase->Activity()->Refresh());
  EXPECT_EQ(-1, oDatabase->Activity()->SQLCounter(0));
}

TEST(SQLiteCaches, AreThoseOfTheConnection) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db", "PRAGMA page_size=1024; PRAGMA default_cache_size=300");
  InsertRows(oApplication, 10);
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  const auto oCaches = oDatabase->Caches();
  ASSERT_TRUE(oCaches->Refresh());
  EXPECT_EQ(300, oCaches->DataCacheSize()) << "KB, and a page has one";
  EXPECT_EQ(300, oDatabase->StateInfo()->CacheTotal());
  EXPECT_GT(oDatabase->StateInfo()->CacheUsed(), 0);
  EXPECT_GT(oCaches->DataCacheUsedSize(), 0);
  EXPECT_LE(oCaches->DataCacheUsedSize(), 300);
  EXPECT_LT(oCaches->RollbackCacheSize(), 0) << "there is no such cache";
  EXPECT_EQ(oCaches->DataCacheAccesses(0), oCaches->DataCacheAccesses(1) + oCaches->DataCacheAccesses(2));
  EXPECT_GT(oCaches->DataCacheAccesses(2), 0);
  EXPECT_EQ("300", oCaches->DataCacheParam()->Value());
  const int iBefore = oDatabase->StateInfo()->CacheHitRate();
  for (int i = 0; i < 50; ++i) oDatabase->StateInfo()->DataTotal();
  EXPECT_GT(oDatabase->StateInfo()->CacheHitRate(), iBefore);
  EXPECT_LE(oDatabase->StateInfo()->CacheHitRate(), 100);
  oDatabase->Shutdown();
  EXPECT_FALSE(oDatabase->Caches()->Refresh());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("online")) << oDatabase->LastError().ErrorText;
  EXPECT_LT(oDatabase->Caches()->DataCacheSize(), 0);
}

TEST(SQLiteSystemViews, TellWhatTheFileHolds) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db",
                           "PRAGMA user_version=77;"
                           "CREATE TABLE customer(id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL UNIQUE);"
                           "CREATE TABLE sale(day, customer REFERENCES customer ON DELETE CASCADE, PRIMARY KEY(day, "
                           "customer)) WITHOUT ROWID;"
                           "CREATE INDEX latest ON sale(day DESC, lower(customer)) WHERE day > 0;"
                           "CREATE VIEW broken AS SELECT * FROM gone; CREATE VIEW names AS SELECT name FROM customer;"
                           "CREATE TRIGGER fired AFTER UPDATE ON customer BEGIN SELECT 1; END; INSERT INTO customer "
                           "VALUES(5, 'x'); ANALYZE");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  const auto Has = [&](const std::string& sView, const std::vector<std::string>& oRow) {
    const Rows oRows = ReadView(*oDatabase, sView);
    EXPECT_TRUE(std::ranges::find(oRows, oRow) != oRows.end()) << sView << ": " << testing::PrintToString(oRows);
  };
  Has("TABLES", {"main", "sale", "table", "2", "1", "0"});
  Has("COLUMNS", {"main", "names", "1", "name", "TEXT", "0", "(null)", "0", "0"});
  Has("VIEWS", {"main", "broken", "CREATE VIEW broken AS SELECT * FROM gone"});
  Has("TRIGGERS", {"main", "fired", "customer", "CREATE TRIGGER fired AFTER UPDATE ON customer BEGIN SELECT 1; END"});
  Has("INDEXES", {"main", "sale", "latest", "0", "c", "1"});
  Has("INDEX COLUMNS", {"main", "sale", "latest", "2", "expression", "0", "BINARY"});
  Has("FOREIGN KEYS", {"main", "sale", "0", "1", "customer", "customer", "(null)", "NO ACTION", "CASCADE"});
  Has("STATISTICS", {"customer", "sqlite_autoindex_customer_1", "1 1"});
  Has("LIMITS", {"columns of a table, an index or a result", "2000"});

  const auto oHeader = View(*oDatabase, "FILE HEADER");
  ASSERT_TRUE(oHeader->Open() && oHeader->IsRecord() && oHeader->NextRow());
  std::map<std::string, std::string> fields;
  for (int i = 0; i < oHeader->ColumnCount(); ++i) fields[oHeader->ColumnName(i)] = oHeader->Value(i);
  EXPECT_EQ("77", fields["User version"]);
  EXPECT_EQ(std::to_string(sqlite3_libversion_number()), fields["Last writer's version"]);

  // Each view is read afresh, and the same number leads to the same view.
  oApplication.Run("CREATE TABLE another(v)");
  Has("TABLES", {"main", "another", "table", "1", "0", "0"});
  const auto oViews = oDatabase->SysInfos();
  for (int i = 1; i <= oViews->Count(); ++i) EXPECT_EQ(i, oViews->Item(i)->Index());
}

TEST(SQLiteSystemViews, StatementsAreCountedByTheirText) {
  Folder oFolder;
  Application(oFolder / "a.db", "CREATE TABLE t(v); INSERT INTO t VALUES(3), (1), (2)");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  for (int i = 0; i < 3; ++i) ReadTable(*oDatabase, "main", "t");
  int iFound = 0;
  for (const auto& oRow : ReadView(*oDatabase, "STATEMENTS")) {
    if (oRow[0].find("* FROM \"main\".\"t\" ORDER BY") == std::string::npos) continue;
    ++iFound;
    EXPECT_EQ("3", oRow[1]) << "runs";
    EXPECT_EQ("9", oRow[2]) << "rows";
    EXPECT_EQ("6", oRow[5]) << "scan steps from row to row";
    EXPECT_EQ("3", oRow[8]) << "prepares";
  }
  EXPECT_EQ(1, iFound);
}

// The page of system tables has one link a table; each of them opens, or says
// that a database file has nothing like it.
TEST(SQLiteSystemTables, AnswerToTheNamesOfThePage) {
  Folder oFolder;
  Application(oFolder / "a.db",
              "CREATE TABLE t(id INTEGER PRIMARY KEY AUTOINCREMENT, p REFERENCES t, n NOT NULL UNIQUE);"
              "INSERT INTO t VALUES(7, 7, 1); ANALYZE");
  const auto oDatabase = OpenDatabase(oFolder / "a.db");
  std::set<std::string> opened;
  for (const std::string& sName : SystemTables()) {
    if (Table(*oDatabase, "SYSDD", sName)->Open()) {
      opened.insert(sName);
    } else {
      EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("SYSDD." + sName + ": a SQLite database"));
    }
  }
  EXPECT_EQ((std::set<std::string>{"COLUMNS", "CONSTRAINTS", "FOREIGNKEYCOLUMNS", "FOREIGNKEYS", "FUNCTIONS",
                                   "INDEXCOLUMNS", "INDEXES", "INDEXSTATISTICS", "SCHEMAS", "SEQUENCES", "TABLES",
                                   "TABLESTATISTICS", "TRIGGERS", "VIEWS"}),
            opened);
  EXPECT_EQ((Rows{{"t", "7"}}), ReadTable(*oDatabase, "SYSDD", "SEQUENCES"));
  EXPECT_EQ((Rows{{"main", "t", "FOREIGN KEY", "p"},
                  {"main", "t", "NOT NULL", "n"},
                  {"main", "t", "PRIMARY KEY", "id"},
                  {"main", "t", "UNIQUE", "n"}}),
            ReadTable(*oDatabase, "SYSDD", "CONSTRAINTS"));
}
