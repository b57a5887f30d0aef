#include "tests/instances/SQLiteRows.h"

#include <algorithm>

using namespace SQLiteFiles;

namespace {

/// A common table expression with the numbers 1 to iCount, called n(i).
std::string Numbers(int iCount) {
  return "WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i < " + std::to_string(iCount) + ") ";
}

class SQLiteRows : public testing::Test {
 protected:
  void Run(const std::string& sSQL) { m_oApplication.Run(sSQL); }
  void Open(ZELWbr3::SQLite::Options oOptions = {}) {
    m_oDatabase = SQLiteFiles::OpenDatabase(m_oFolder / "a.db", oOptions);
  }
  std::string Error() { return m_oDatabase->LastError().ErrorText; }

  Folder m_oFolder;
  Application m_oApplication{m_oFolder / "a.db"};
  std::shared_ptr<ZELLib3::Database> m_oDatabase;
};

struct Kind {
  const char* Name;
  const char* Make;  ///< of the table base(k, v)
  const char* Read = "base";
};

void PrintTo(const Kind& oKind, std::ostream* pStream) { *pStream << oKind.Name; }

class SQLiteRowsOfKind : public SQLiteRows, public testing::WithParamInterface<Kind> {};

}  // namespace

// Whatever stands behind the name, each row is delivered once, through several
// blocks.
TEST_P(SQLiteRowsOfKind, AreAllDeliveredOnce) {
  Run(GetParam().Make);
  for (const int iRows : {0, 1, 200, 201, 4000}) {
    SCOPED_TRACE(iRows);
    if (iRows > 0) {
      Run("DELETE FROM base");
      Run("INSERT INTO base(k, v) " + Numbers(iRows) + "SELECT i * 7 % 4001 - 2000, 'v' || i FROM n");
    }
    Open();
    const auto oTable = Table(*m_oDatabase, "main", GetParam().Read);
    ASSERT_TRUE(oTable->Open()) << Error();
    EXPECT_EQ(iRows == 0, oTable->IsEmpty());
    EXPECT_EQ(iRows > 200, oTable->HasMore()) << "exactly when there are rows behind the block";
    EXPECT_EQ(std::min(iRows, 200), oTable->RowCount());
    EXPECT_EQ("k", oTable->ColumnName(0));
    EXPECT_EQ("v", oTable->ColumnName(1));
    Rows oRows = ReadAll(*oTable);
    ASSERT_EQ(std::size_t(iRows), oRows.size());
    std::ranges::sort(oRows);
    EXPECT_TRUE(std::ranges::adjacent_find(oRows) == oRows.end());
    EXPECT_EQ(iRows, oTable->RowCount());
  }
}

INSTANTIATE_TEST_SUITE_P(
    SQLite, SQLiteRowsOfKind,
    testing::Values(Kind{"RowidTable", "CREATE TABLE base(k, v)"},
                    Kind{"HiddenRowid", "CREATE TABLE base(k, v, rowid AS (1) VIRTUAL, _ROWID_ AS (2) VIRTUAL)"},
                    Kind{"NoNameForRowid", "CREATE TABLE base(k, v, rowid AS (1), _rowid_ AS (2), oid AS (3))"},
                    Kind{"WithoutRowid", "CREATE TABLE base(k, v, PRIMARY KEY(v, k)) WITHOUT ROWID"},
                    Kind{"Descending", "CREATE TABLE base(k INT, v, PRIMARY KEY(k DESC, v DESC)) WITHOUT ROWID"},
                    Kind{"MixedOrder", "CREATE TABLE base(k, v, PRIMARY KEY(k DESC, v)) WITHOUT ROWID"},
                    Kind{"OtherCollation",
                         "CREATE TABLE base(k, v TEXT COLLATE NOCASE, PRIMARY KEY(v COLLATE BINARY)) WITHOUT ROWID"},
                    Kind{"View", "CREATE TABLE base(k, v); CREATE VIEW seen AS SELECT * FROM base", "seen"},
                    Kind{"VirtualTable", "CREATE VIRTUAL TABLE base USING fts5(k, v)"}),
    [](const auto& oInfo) { return std::string(oInfo.param.Name); });

TEST_F(SQLiteRows, ValuesAreShownAsTheyAre) {
  Run("CREATE TABLE t(id INTEGER PRIMARY KEY, v)");
  Run("INSERT INTO t(v) VALUES (NULL), (''), ('(null)'), ('it''s \"Größe\"'), (-9223372036854775808), (0.1), (1e300),"
      " (x''), (x'0A'), (x'000102030405060708090a0b0c0d0e0f'), (zeroblob(1000000)), ('a' || char(0) || 'b')");
  Open();
  std::vector<std::string> oValues;
  for (const auto& oRow : ReadTable(*m_oDatabase, "", "t")) oValues.push_back(oRow.at(1));
  const std::vector<std::string> oExpected = {"(null)",
                                              "",
                                              "(null)",
                                              "it's \"Größe\"",
                                              "-9223372036854775808",
                                              "0.1",
                                              "1.0e+300",
                                              "0 bytes",
                                              "1 byte: 0A",
                                              "16 bytes: 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F",
                                              "1000000 bytes: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 …",
                                              std::string("a\0b", 3)};
  EXPECT_EQ(oExpected, oValues);
}

TEST_F(SQLiteRows, NamesAreTakenLiterally) {
  const std::string sName = "a\"b'; DROP TABLE \"base\" --";
  Run("CREATE TABLE base(v); INSERT INTO base VALUES('base')");
  Run(R"(CREATE TABLE "a""b'; DROP TABLE ""base"" --"("c""1" TEXT, "select", PRIMARY KEY("c""1")) WITHOUT ROWID;)");
  Run(R"(INSERT INTO "a""b'; DROP TABLE ""base"" --" )" + Numbers(300) + "SELECT 'k' || i, i FROM n");
  Open();
  const auto oTable = Table(*m_oDatabase, "main", sName);
  ASSERT_TRUE(oTable->Open()) << Error();
  EXPECT_EQ("c\"1", oTable->ColumnName(0));
  EXPECT_EQ("TEXT", oTable->ColumnTitle(0));
  EXPECT_EQ(300u, ReadAll(*oTable).size());
  EXPECT_EQ(1u, ReadTable(*m_oDatabase, "MAIN", "BASE").size());
  for (const char* sOwner : {"temp", "nobody", "\"", "main\".\"base"}) {
    EXPECT_FALSE(Table(*m_oDatabase, sOwner, "base")->Open()) << sOwner;
    EXPECT_NE(std::string::npos, Error().find("no such table")) << Error();
  }
  EXPECT_FALSE(Table(*m_oDatabase, "", std::string("base\0", 5))->Open());
}

TEST_F(SQLiteRows, BlocksAreBoundedInBytes) {
  Run("CREATE TABLE t(v); INSERT INTO t " + Numbers(30) + "SELECT printf('%.*c', 1000000, 'x') FROM n");
  Run("CREATE VIEW seen AS SELECT v FROM t");
  Open();
  for (const char* sName : {"t", "seen"}) {
    const auto oTable = Table(*m_oDatabase, "main", sName);
    ASSERT_TRUE(oTable->Open()) << Error();
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
      "CREATE VIEW seen AS SELECT * FROM t");
  Run("INSERT INTO t " + Numbers(3000) + "SELECT i, i FROM n; INSERT INTO keyed SELECT id, v FROM t");
  Open();
  const auto oTable = Table(*m_oDatabase, "main", "t");
  const auto oKeyed = Table(*m_oDatabase, "main", "keyed");
  const auto oView = Table(*m_oDatabase, "main", "seen");
  ASSERT_TRUE(oTable->Open() && oKeyed->Open() && oView->Open());
  // Rows that have been read go: those behind them are not shifted by it, where
  // there is a key.
  ASSERT_EQ(SQLITE_OK, m_oApplication.Try("DELETE FROM t WHERE id <= 150; DELETE FROM keyed WHERE k <= 150"));
  for (const auto& oReader : {oTable, oKeyed}) {
    const Rows oRows = ReadAll(*oReader);
    ASSERT_EQ(3000u, oRows.size()) << oReader->Name();
    EXPECT_EQ("201", oRows[200][0]);
  }
  Rows oRows = ReadBlock(*oView);
  ASSERT_TRUE(oView->ReadMore() && oView->ReadMore());
  oView->Pause();
  ASSERT_EQ(SQLITE_OK, m_oApplication.Try("DELETE FROM t WHERE id <= 160"));
  EXPECT_GE(oView->RowCount() + ReadAll(*oView).size(), 2840u) << "a view has none";
}

// A view that is read without a pause stays open from block to block.
TEST_F(SQLiteRows, AWriterDoesNotWaitForTheLastRow) {
  Run("CREATE TABLE t(id INTEGER PRIMARY KEY, v); CREATE VIEW seen AS SELECT id FROM t");
  Run("INSERT INTO t " + Numbers(200000) + "SELECT i, i FROM n");
  Open();
  const auto oView = Table(*m_oDatabase, "main", "seen");
  ASSERT_TRUE(oView->Open() && oView->ReadMore() && oView->ReadMore());
  Run("BEGIN; DELETE FROM t WHERE id > 199990");
  ASSERT_EQ(SQLITE_BUSY, m_oApplication.Try("COMMIT"));
  while (oView->HasMore() && m_oApplication.Try("COMMIT") != SQLITE_OK) ASSERT_TRUE(oView->ReadMore()) << Error();
  EXPECT_TRUE(oView->HasMore());
  ReadAll(*oView);
  EXPECT_EQ(199990, oView->RowCount()) << "no row twice, none left out";
}

TEST_F(SQLiteRows, FiguresAreOfTheirOwnMomentWhileRowsAreRead) {
  Run("PRAGMA journal_mode=WAL; CREATE TABLE t(id INTEGER PRIMARY KEY, v); CREATE VIEW seen AS SELECT * FROM t");
  Run("INSERT INTO t " + Numbers(2000) + "SELECT i, i FROM n");
  Open({.ReadingLifetime = std::chrono::milliseconds(0)});
  const auto oView = Table(*m_oDatabase, "main", "seen");
  ASSERT_TRUE(oView->Open() && oView->ReadMore() && oView->ReadMore());
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
  Run("CREATE TABLE t(id INTEGER PRIMARY KEY, v); CREATE VIEW seen AS SELECT * FROM t");
  Run("INSERT INTO t(v) " + Numbers(3000) + "SELECT i FROM n");
  Open();
  struct Case {
    const char* Name;
    const char* TakeAway;
    const char* GiveBack;
  };
  for (const Case& oCase : {Case{"t", "ALTER TABLE t RENAME TO elsewhere", "ALTER TABLE elsewhere RENAME TO t"},
                            Case{"seen", "DROP VIEW seen", "CREATE VIEW seen AS SELECT * FROM t"}}) {
    SCOPED_TRACE(oCase.Name);
    const auto oTable = Table(*m_oDatabase, "main", oCase.Name);
    ASSERT_TRUE(oTable->Open());
    Rows oRows = ReadBlock(*oTable);
    while (oRows.size() < 1000) {
      ASSERT_TRUE(oTable->ReadMore());
      for (auto& oRow : ReadBlock(*oTable)) oRows.push_back(oRow);
    }
    oTable->Pause();
    Run(oCase.TakeAway);
    EXPECT_FALSE(oTable->ReadMore());
    EXPECT_NE(std::string::npos, Error().find("no such table")) << Error();
    EXPECT_TRUE(oTable->HasMore());
    EXPECT_TRUE(oTable->EndOfBlock());
    EXPECT_EQ(1000, oTable->RowCount());
    Run(oCase.GiveBack);
    ASSERT_TRUE(oTable->ReadMore()) << Error();
    for (auto& oRow : ReadAll(*oTable)) oRows.push_back(oRow);
    ASSERT_EQ(3000u, oRows.size());
    EXPECT_EQ("1001", oRows[1000][0]);
    EXPECT_FALSE(oTable->ReadMore());
    EXPECT_NE(std::string::npos, Error().find("no more rows")) << Error();
  }
  const auto oTable = Table(*m_oDatabase, "main", "t");
  ASSERT_TRUE(oTable->Open());
  Run("ALTER TABLE t ADD COLUMN w");
  EXPECT_FALSE(oTable->ReadMore());
  EXPECT_NE(std::string::npos, Error().find("columns have changed")) << Error();
  EXPECT_TRUE(oTable->Open());
  EXPECT_EQ(3, oTable->ColumnCount());
}

TEST_F(SQLiteRows, WhatCannotBeReadIsSaid) {
  Run("CREATE TABLE t(v); CREATE VIEW broken AS SELECT * FROM gone; CREATE VIEW unsafe AS SELECT load_extension('x')");
  Run("CREATE VIEW endless AS WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT max(i) FROM n");
  Open({.BusyTimeout = std::chrono::milliseconds(1), .StatementTimeout = std::chrono::milliseconds(50)});
  const auto ExpectFails = [&](const std::string& sName, const std::string& sWhy) {
    const auto oTable = Table(*m_oDatabase, "main", sName);
    EXPECT_FALSE(oTable->Open()) << sName;
    EXPECT_NE(std::string::npos, Error().find(sWhy)) << Error();
    EXPECT_FALSE(oTable->HasMore());
    EXPECT_EQ(0, oTable->ColumnCount());
    EXPECT_FALSE(oTable->ReadMore());
  };
  ExpectFails("broken", "gone");
  ExpectFails("unsafe", "unsafe");
  ExpectFails("endless", "took too long");
  Run("BEGIN EXCLUSIVE");
  ExpectFails("t", "locked");
  Run("COMMIT");
  EXPECT_TRUE(Table(*m_oDatabase, "main", "t")->Open());
  m_oDatabase->Shutdown();
  ExpectFails("t", "offline");
  m_oDatabase->Online();
  EXPECT_TRUE(Table(*m_oDatabase, "main", "t")->Open());
}

// What the library's virtual machine does for a row stays the same, however
// many rows there are.
TEST_F(SQLiteRows, TheWorkGrowsWithTheRows) {
  Run("CREATE TABLE keyed(k, v, PRIMARY KEY(k)) WITHOUT ROWID; CREATE TABLE t(v);"
      "CREATE VIEW seen AS SELECT v, v AS w FROM t");
  Open();
  const auto Steps = [&](const std::string& sName, int iRows) {
    Run("DELETE FROM keyed; DELETE FROM t");
    Run("INSERT INTO t " + Numbers(iRows) + "SELECT i FROM n");
    Run("INSERT INTO keyed SELECT v, v FROM t");
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
