#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/testing/Contract.h"

using namespace ZELWbr3::Testing;

using namespace SQLiteFiles;

namespace {

std::shared_ptr<ZELLib3::Database> Make(const ZELWbr3::Testing::TempFolder& oFolder, const std::string& sMode) {
  const std::string sPath = oFolder.Path("a.db");
  {
    Application oApplication(sPath, "PRAGMA journal_mode=" + sMode);
    oApplication.Run(
        "CREATE TABLE customer(id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL UNIQUE, photo BLOB);"
        "CREATE TABLE sale(customer REFERENCES customer, day TEXT, PRIMARY KEY(customer, day)) WITHOUT ROWID;"
        "CREATE INDEX by_day ON sale(day DESC); CREATE VIEW today AS SELECT * FROM sale;"
        "CREATE VIEW broken AS SELECT * FROM gone;"
        "CREATE TRIGGER changed AFTER UPDATE ON customer BEGIN SELECT 1; END;"
        "WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i < 450)"
        " INSERT INTO customer SELECT i, 'customer ' || i, iif(i % 3, x'00ff', NULL) FROM n;"
        "INSERT INTO sale SELECT id, '2026-01-0' || (id % 9 + 1) FROM customer;"
        "ANALYZE");
    oApplication.LeaveLogBehind();
  }
  auto oDatabase = std::make_shared<ZELWbr3::SQLite::SQLiteDatabase>(
      sPath, ZELWbr3::SQLite::Options{.StateFolder = oFolder.Path("state")});
  // Something to tell about, in every list there is.
  oDatabase->Parameters()->Load();
  Application(sPath, "PRAGMA user_version=8");
  EXPECT_TRUE(oDatabase->RegisterCopy("/backup/a.db", {2026, 1, 2, 3, 4, 5}, "first"));
  // Two blocks and a half.
  Application(oFolder.Path("state/history.db"),
              "WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i < 249) INSERT INTO copies(file, made, path)"
              " SELECT c.file, c.made, c.path FROM copies AS c, n");
  return oDatabase;
}

ContractCase Case(const char* sName, const char* sMode, const char* sOwner, const char* sTable) {
  return {sName, [=](const auto& oFolder) { return Make(oFolder, sMode); }, sOwner, sTable};
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(SQLite, Contract,
                         testing::Values(Case("Wal", "WAL", "main", "customer"),
                                         Case("RollbackJournal", "DELETE", "", "TODAY"),
                                         Case("SystemTable", "WAL", "SYSDD", "COLUMNS")),
                         ContractCase::Named);
