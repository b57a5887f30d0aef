#include "tests/instances/Contract.h"
#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;

namespace {

/// The instance of a file that lives as long as the instance does.
class OwnFile : public ZELWbr3::SQLite::SQLiteDatabase {
 public:
  OwnFile(std::shared_ptr<Folder> oFolder, const ZELWbr3::SQLite::Options& oOptions)
      : SQLiteDatabase(*oFolder / "a.db", oOptions), m_oFolder(std::move(oFolder)) {}

 private:
  std::shared_ptr<Folder> m_oFolder;
};

std::shared_ptr<ZELLib3::Database> Make(const std::string& sMode) {
  auto oFolder = std::make_shared<Folder>();
  {
    Application oApplication(*oFolder / "a.db", "PRAGMA journal_mode=" + sMode);
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
  ZELWbr3::SQLite::Options oOptions;
  oOptions.StateFolder = *oFolder / "state";
  auto oDatabase = std::make_shared<OwnFile>(oFolder, oOptions);
  // Something to tell about, in every list there is.
  oDatabase->Parameters()->Load();
  Application(*oFolder / "a.db", "PRAGMA user_version=8");
  EXPECT_TRUE(oDatabase->RegisterCopy("/backup/a.db", {2026, 1, 2, 3, 4, 5}, "first"));
  // Two blocks and a half.
  Application(oOptions.StateFolder + "/history.db",
              "WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i < 249) INSERT INTO copies(file, made, path)"
              " SELECT c.file, c.made, c.path FROM copies AS c, n");
  return oDatabase;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(SQLite, Contract,
                         testing::Values(ContractCase{"Wal", [] { return Make("WAL"); }, "main", "customer"},
                                         ContractCase{"RollbackJournal", [] { return Make("DELETE"); }, "", "TODAY"},
                                         ContractCase{"SystemTable", [] { return Make("WAL"); }, "SYSDD", "COLUMNS"}),
                         ContractCase::Named);
