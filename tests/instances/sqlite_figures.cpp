#include "tests/instances/SQLiteFiles.h"

using namespace SQLiteFiles;
namespace fs = std::filesystem;

namespace {

class SQLiteFigures : public SQLiteTest {};
class SQLiteUntouched : public SQLiteTestWith {};

class SQLiteLog : public SQLiteTest {
 protected:
  SQLiteLog() { Run("PRAGMA journal_mode=WAL"); }
};

}  // namespace

TEST_F(SQLiteFigures, ThoseOfAPageAreOfOneMoment) {
  InsertRows(App(), 10);
  m_oDatabase = ZELWbr3::SQLite::OpenDatabase(Path(), {.ReadingLifetime = std::chrono::hours(1)});
  const int iTotal = State()->DataTotal();
  InsertRows(App(), 50);
  EXPECT_EQ(iTotal, State()->DataUsed()) << "a file that grows has never more used than total";
  m_oDatabase->Shutdown();
  EXPECT_EQ(2, State()->Status()) << "the instance's own changes show at once";
  m_oDatabase->Online();
  EXPECT_EQ(Number("PRAGMA page_count"), State()->DataTotal());
  fs::remove(Path());
  EXPECT_FALSE(State()->InfoAvailable()) << "and so does a file that vanishes";
}

TEST_F(SQLiteFigures, NameTheFileTheSystemAndTheLibrary) {
  fs::create_directory(Path("sub"));
  const std::string sName = "Größe 100%?#&immutable=1;'\".db";
  Application(Path("sub/" + sName), "CREATE TABLE t(v)");
  const auto oDatabase = OpenDatabase(Path("sub/../sub/" + sName));
  EXPECT_EQ(sName, oDatabase->InstanceName());
  EXPECT_EQ(Path("sub"), oDatabase->RunDirectory());
  EXPECT_EQ(std::string("SQLite ") + sqlite3_libversion(), oDatabase->Version()->Text());
  EXPECT_FALSE(fs::exists(Path("sub/Größe 100%"))) << "the name was taken for a URI";
}

INSTANTIATE_TEST_SUITE_P(, SQLiteUntouched,
                         testing::Values("PRAGMA journal_mode=DELETE", "PRAGMA journal_mode=TRUNCATE",
                                         "PRAGMA journal_mode=PERSIST", "PRAGMA journal_mode=WAL",
                                         "PRAGMA journal_mode=WAL; -- left behind"));

TEST_P(SQLiteUntouched, ReadingChangesNothing) {
  InsertRows(App(), 20);
  if (std::string(GetParam()).ends_with("left behind")) App().LeaveLogBehind();
  m_oApplication.reset();
  // The index of a log holds read marks; it is rebuilt at will.
  fs::remove(Path("a.db-shm"));
  const auto before = m_oFolder.Contents();
  Open().StateInfo()->AutoUpdateStatistics();
  EXPECT_GT(State()->DataTotal(), 0);
  EXPECT_TRUE(m_oDatabase->Shutdown() && m_oDatabase->Online() && m_oDatabase->Admin()) << Error();
  m_oDatabase.reset();
  fs::remove(Path("a.db-shm"));
  EXPECT_EQ(before, m_oFolder.Contents());
}

TEST_F(SQLiteLog, ThatOthersWroteStaysWhenTheInstanceIsTheLastToLeave) {
  m_oApplication.reset();
  Open();
  InsertRows(App(), 1);
  m_oApplication.reset();
  const std::string sLog = ReadFile(Path("a.db-wal"));
  ASSERT_FALSE(sLog.empty());
  m_oDatabase.reset();
  EXPECT_EQ(sLog, ReadFile(Path("a.db-wal")));
  EXPECT_EQ(1, Number("SELECT count(*) FROM t"));
}

TEST_F(SQLiteLog, OfAFilePutInThePlaceOfTheOpenedOneStays) {
  m_oApplication.reset();
  Open();
  ASSERT_TRUE(fs::exists(Path("a.db-wal"))) << "the instance's own, to be taken away at the end";
  for (const char* sName : {"a.db", "a.db-wal", "a.db-shm"}) fs::remove(Path(sName));
  Run("PRAGMA journal_mode=WAL; CREATE TABLE t(v); PRAGMA wal_checkpoint(TRUNCATE)");
  ASSERT_EQ(0u, fs::file_size(Path("a.db-wal")));
  m_oDatabase.reset();
  EXPECT_TRUE(fs::exists(Path("a.db-wal")));
}
