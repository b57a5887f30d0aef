#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/base/Worker.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"
#include "zelwbr3/testing/Rows.h"

using namespace ZELWbr3::Testing;

using namespace SQLiteFiles;
using namespace std::chrono_literals;

namespace {

/// A common table expression with the numbers 1 to iCount, called n(i).
std::string Numbers(int iCount) {
  return "WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i < " + std::to_string(iCount) + ") ";
}

class SQLiteRows : public SQLiteTest {
 protected:
  auto OpenTable(const std::string& sName) {
    auto oTable = Table(*m_oDatabase, "main", sName);
    EXPECT_TRUE(oTable->Open()) << Error();
    return oTable;
  }
};

/// The table base(k, v), read by itself or as the view "seen".
class SQLiteRowsOf : public SQLiteTestWith {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(
    , SQLiteRowsOf,
    testing::Values("CREATE TABLE base(k, v)",
                    "CREATE TABLE base(k, v, rowid AS (1) VIRTUAL, _ROWID_ AS (2) VIRTUAL)",   // a hidden rowid
                    "CREATE TABLE base(k, v, rowid AS (1), _rowid_ AS (2), oid AS (3))",       // without a name
                    "CREATE TABLE base(k, v, PRIMARY KEY(v, k)) WITHOUT ROWID",                // another key
                    "CREATE TABLE base(k INT, v, PRIMARY KEY(k DESC, v DESC)) WITHOUT ROWID",  // descending
                    "CREATE TABLE base(k, v, PRIMARY KEY(k DESC, v)) WITHOUT ROWID",           // mixed order
                    "CREATE TABLE base(k, v TEXT COLLATE NOCASE, PRIMARY KEY(v COLLATE BINARY)) WITHOUT ROWID",
                    "CREATE TABLE base(k, v); CREATE VIEW seen AS SELECT * FROM base",
                    "CREATE VIRTUAL TABLE base USING fts5(k, v)"));

// Each row is delivered once, through several blocks.
TEST_P(SQLiteRowsOf, AnyKindAreAllDeliveredOnce) {
  const bool bView = std::string(GetParam()).find("VIEW") != std::string::npos;
  for (const int iRows : {0, 1, 200, 201, 4000}) {
    SCOPED_TRACE(iRows);
    if (iRows > 0) Run("DELETE FROM base");
    if (iRows > 0) Run("INSERT INTO base(k, v) " + Numbers(iRows) + "SELECT i * 7 % 4001 - 2000, 'v' || i FROM n");
    const auto oTable = Table(Open(), "main", bView ? "seen" : "base");
    ASSERT_TRUE(oTable->Open()) << Error();
    EXPECT_EQ(iRows == 0, oTable->IsEmpty());
    EXPECT_EQ(iRows > 200, oTable->HasMore()) << "exactly when there are rows after the block";
    EXPECT_EQ(std::min(iRows, 200), oTable->RowCount());
    EXPECT_EQ("k v", oTable->ColumnName(0) + " " + oTable->ColumnName(1));
    Rows oRows = ReadAll(*oTable);
    ASSERT_EQ(std::size_t(iRows), oRows.size());
    std::ranges::sort(oRows);
    EXPECT_TRUE(std::ranges::adjacent_find(oRows) == oRows.end());
    EXPECT_EQ(iRows, oTable->RowCount());
  }
}

TEST_F(SQLiteRows, BlocksAreBoundedInBytes) {
  Run("CREATE TABLE t(v); INSERT INTO t " + Numbers(30) + "SELECT printf('%.*c', 1000000, 'x') FROM n");
  Run("CREATE VIEW seen AS SELECT v FROM t");
  Open();
  for (const char* sName : {"t", "seen"}) {
    const auto oTable = OpenTable(sName);
    EXPECT_GT(oTable->RowCount(), 1);
    EXPECT_LT(oTable->RowCount(), 10) << "some MB at a time";
    const Rows oRows = ReadAll(*oTable);
    ASSERT_EQ(30u, oRows.size());
    EXPECT_EQ(1000000u, oRows.back()[0].size()) << "a text is whole";
  }
}

// In a file with a rollback journal, a statement that is still open would shut
// every writer out.
TEST_F(SQLiteRows, NothingIsLockedWhileBlocksAreLookedAt) {
  Run("CREATE TABLE t(id INTEGER PRIMARY KEY, v); CREATE TABLE keyed(k, v, PRIMARY KEY(k, v)) WITHOUT ROWID;"
      "CREATE VIEW seen AS SELECT * FROM t; INSERT INTO t " +
      Numbers(3000) + "SELECT i, i FROM n; INSERT INTO keyed SELECT id, v FROM t");
  Open();
  const auto oTable = OpenTable("t");
  const auto oKeyed = OpenTable("keyed");
  const auto oView = OpenTable("seen");
  // Rows that have been read go: those after them are not shifted by it, where
  // there is a key.
  ASSERT_EQ(SQLITE_OK, App().Try("DELETE FROM t WHERE id <= 150; DELETE FROM keyed WHERE k <= 150"));
  for (const auto& oReader : {oTable, oKeyed}) {
    const Rows oRows = ReadAll(*oReader);
    ASSERT_EQ(3000u, oRows.size()) << oReader->Name();
    EXPECT_EQ("201", oRows[200][0]);
  }
  ReadBlock(*oView);
  ASSERT_TRUE(oView->ReadMore() && oView->ReadMore());
  oView->Pause();
  ASSERT_EQ(SQLITE_OK, App().Try("DELETE FROM t WHERE id <= 160"));
  EXPECT_GE(oView->RowCount() + ReadAll(*oView).size(), 2840u) << "a view has none";
}

// A view that is read without a pause stays open from block to block.
TEST_F(SQLiteRows, AWriterDoesNotWaitForTheLastRow) {
  Run("CREATE TABLE t(id INTEGER PRIMARY KEY, v); CREATE VIEW seen AS SELECT id FROM t; INSERT INTO t " +
      Numbers(200000) + "SELECT i, i FROM n");
  Open();
  const auto oView = OpenTable("seen");
  ASSERT_TRUE(oView->ReadMore() && oView->ReadMore());
  Run("BEGIN; DELETE FROM t WHERE id > 199990");
  ASSERT_EQ(SQLITE_BUSY, App().Try("COMMIT"));
  while (oView->HasMore() && App().Try("COMMIT") != SQLITE_OK) ASSERT_TRUE(oView->ReadMore()) << Error();
  EXPECT_TRUE(oView->HasMore());
  ReadAll(*oView);
  EXPECT_EQ(199990, oView->RowCount()) << "no row twice, none left out";
}

TEST_F(SQLiteRows, FiguresAreOfTheirOwnMomentWhileRowsAreRead) {
  Run("PRAGMA journal_mode=WAL; CREATE TABLE t(id INTEGER PRIMARY KEY, v); CREATE VIEW seen AS SELECT * FROM t;"
      "INSERT INTO t " +
      Numbers(2000) + "SELECT i, i FROM n");
  Open();
  const auto oView = OpenTable("seen");
  ASSERT_TRUE(oView->ReadMore() && oView->ReadMore());
  const int lBefore = m_oDatabase->StateInfo()->DataUsed();
  ASSERT_TRUE(oView->ReadMore());
  Run("INSERT INTO t(v) " + Numbers(50) + "SELECT printf('%.*c', 4000, 'x') FROM n");
  EXPECT_GE(m_oDatabase->StateInfo()->DataUsed(), lBefore + 50);
  ReadAll(*oView);
  EXPECT_EQ(2050, oView->RowCount());
  ASSERT_TRUE(oView->Open() && oView->ReadMore() && oView->ReadMore());
  EXPECT_TRUE(m_oDatabase->Shutdown());
  EXPECT_FALSE(oView->ReadMore());
}

TEST_F(SQLiteRows, ReadingOnAfterAFailureLosesNothing) {
  Run("CREATE TABLE t(id INTEGER PRIMARY KEY, v); CREATE VIEW seen AS SELECT * FROM t; INSERT INTO t(v) " +
      Numbers(3000) + "SELECT i FROM n");
  Open();
  struct Case {
    const char* Name;
    const char* TakeAway;
    const char* GiveBack;
  };
  for (const Case& oCase : {Case{"t", "ALTER TABLE t RENAME TO elsewhere", "ALTER TABLE elsewhere RENAME TO t"},
                            Case{"seen", "DROP VIEW seen", "CREATE VIEW seen AS SELECT * FROM t"}}) {
    SCOPED_TRACE(oCase.Name);
    const auto oTable = OpenTable(oCase.Name);
    while (oTable->RowCount() < 1000) ASSERT_TRUE(oTable->ReadMore());
    ReadBlock(*oTable);
    oTable->Pause();
    Run(oCase.TakeAway);
    EXPECT_FALSE(oTable->ReadMore());
    ExpectError("no such table");
    EXPECT_TRUE(oTable->HasMore() && oTable->EndOfBlock());
    EXPECT_EQ(1000, oTable->RowCount());
    Run(oCase.GiveBack);
    ASSERT_TRUE(oTable->ReadMore()) << Error();
    const Rows oRows = ReadAll(*oTable);
    ASSERT_EQ(2000u, oRows.size());
    EXPECT_EQ("1001", oRows[0][0]);
    EXPECT_FALSE(oTable->ReadMore());
    ExpectError("no more rows");
  }
  const auto oTable = OpenTable("t");
  Run("ALTER TABLE t ADD COLUMN w");
  EXPECT_FALSE(oTable->ReadMore());
  ExpectError("columns have changed");
  EXPECT_EQ(3, OpenTable("t")->ColumnCount());
}

TEST_F(SQLiteRows, AValueIsShownCutAndOneThatIsVeryLongByItsSizeOnly) {
  Run("CREATE TABLE t(a, b); CREATE TABLE keyed(k PRIMARY KEY, a) WITHOUT ROWID; CREATE VIEW seen AS SELECT a, b FROM "
      "t;"
      "INSERT INTO t VALUES('ok', 1), (char(252) || printf('%.*c', 6000000, 'x'), 2), (zeroblob(6000000), 'ok');"
      "INSERT INTO t VALUES(printf('%.*c', 1048575, 'x') || char(252), 4); INSERT INTO keyed SELECT rowid, a FROM t");
  Open();
  for (const auto& [sName, sText, sBlob] :
       {std::tuple("t", " … (6000002 bytes)", "6000000 bytes: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 …"),
        {"keyed", "… (more than 4194304 bytes)", "6000000 bytes …"},
        {"seen", "… (more than 4194304 bytes)", "6000000 bytes …"}}) {
    const Rows oRows = ReadTable(*m_oDatabase, "main", sName);
    ASSERT_EQ(4u, oRows.size()) << sName;
    const std::size_t iValue = sName == std::string("keyed") ? 1 : 0;
    EXPECT_TRUE(oRows[1][iValue].ends_with(sText)) << sName;
    EXPECT_GT(std::size_t{1049000}, oRows[1][iValue].size());
    EXPECT_EQ(sBlob, oRows[2][iValue]) << sName;
    EXPECT_TRUE(oRows[3][iValue].ends_with("x … (1048577 bytes)")) << "not within a character";
  }
  // A recording keeps what is shown, of so much as fits.
  ZELWbr3::Recorded::RecordOptions oOptions{.Tables = {{"main", "t"}}, .MaxBytes = 100000};
  const auto oNotes = ZELWbr3::Recorded::WriteRecording(*m_oDatabase, Path("a.json"), oOptions);
  EXPECT_EQ("SQLTable \"t\": only the first 2 rows are recorded", oNotes.empty() ? "" : oNotes.back());
  const auto oRecorded = ZELWbr3::Recorded::OpenRecording(Path("a.json"));
  EXPECT_EQ(ReadTable(*m_oDatabase, "main", "t")[1], ReadTable(*oRecorded, "main", "t")[1]);
}

// Views of views of views: running one takes no time, preparing it does.
TEST_F(SQLiteRows, PreparingEndsInTimeToo) {
  Run("CREATE TABLE t(v); CREATE VIEW v0 AS SELECT v FROM t");
  for (int i = 1; i <= 13; ++i) {
    const std::string sBelow = "v" + std::to_string(i - 1);
    Run("CREATE VIEW v" + std::to_string(i) + " AS SELECT a.v FROM " + sBelow + " AS a, " + sBelow);
  }
  Open({.ReadingTimeout = 100ms});
  EXPECT_FALSE(Table(*m_oDatabase, "main", "v13")->Open());
  ExpectError("interrupted");
  // What there was time for is shown.
  const auto oColumns = Table(*m_oDatabase, "SYSDD", "COLUMNS");
  ASSERT_TRUE(oColumns->Open()) << Error();
  EXPECT_EQ("sqlite_schema", ReadBlock(*oColumns).at(0).at(1));
  OpenTable("t");
}

TEST_F(SQLiteRows, ReadingRunsOnAnotherThreadAndIsInterruptedFromThisOne) {
  Run("CREATE VIEW endless AS WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT max(i) FROM n");
  Open({.ReadingTimeout = 1h});
  ZELWbr3::Worker oWorker;
  bool bStop = true;
  m_oDatabase->WaitRunner([&](const std::function<void()>& oPart) {
    oWorker.Begin(oPart);
    while (!oWorker.Wait(1ms)) {
      if (bStop) m_oDatabase->Interrupt();
    }
    if (oWorker.Failure() != nullptr) std::rethrow_exception(oWorker.Failure());
  });
  EXPECT_FALSE(Table(*m_oDatabase, "main", "endless")->Open());
  ExpectError("interrupted");
  bStop = false;
  EXPECT_TRUE(Table(*m_oDatabase, "main", "sqlite_schema")->Open()) << "the next one is read";
  EXPECT_EQ(1, State()->DataTotal());
  m_oDatabase->WaitRunner([](const auto&) { throw 1; });
  EXPECT_THROW(Table(*m_oDatabase, "main", "sqlite_schema")->Open(), int);
  EXPECT_THROW(State()->DataTotal(), int);
}

TEST_F(SQLiteRows, TheRowsBeforeAFailureAreDelivered) {
  Run("CREATE VIEW v AS " + Numbers(400) + "SELECT i, abs(iif(i = 250, -9223372036854775807 - 1, i)) FROM n");
  Open();
  const auto oTable = OpenTable("v");
  ASSERT_TRUE(oTable->ReadMore()) << Error();
  EXPECT_EQ(249, oTable->RowCount());
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(oTable->HasMore());
    EXPECT_FALSE(oTable->ReadMore());
    ExpectError("integer overflow");
  }
  EXPECT_EQ(249, oTable->RowCount());
}

// What the library's virtual machine does for a row stays the same, however
// many rows there are.
TEST_F(SQLiteRows, TheWorkGrowsWithTheRows) {
  Run("CREATE TABLE keyed(k, v, PRIMARY KEY(k)) WITHOUT ROWID; CREATE TABLE t(v);"
      "CREATE VIEW seen AS SELECT v, v AS w FROM t");
  Open();
  const auto Steps = [&](const std::string& sName, int iRows) {
    Run("DELETE FROM keyed; DELETE FROM t; INSERT INTO t " + Numbers(iRows) + "SELECT i FROM n;" +
        "INSERT INTO keyed SELECT v, v FROM t");
    const auto Total = [&] {
      long long lSteps = 0;
      for (const auto& oRow : ReadView(*m_oDatabase, "STATEMENTS")) lSteps += std::stoll(oRow.at(4));
      return lSteps;
    };
    const long long lBefore = Total();
    EXPECT_EQ(std::size_t(iRows), ReadTable(*m_oDatabase, "main", sName).size());
    return double(Total() - lBefore);
  };
  for (const char* sName : {"t", "keyed", "seen"}) {
    EXPECT_LT(Steps(sName, 32000) / Steps(sName, 8000), 6) << sName;
  }
}
