#include "tests/instances/PostgresServers.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/testing/Rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

using namespace ZELWbr3::Testing;

using PostgresServers::Await;
using PostgresServers::Client;
using PostgresServers::Primary;
using ZELWbr3::Postgres::OpenDatabase;

namespace {

class PostgresRows : public testing::Test {
 protected:
  PostgresRows() {
    Await([this] { return State().empty(); }, "the end of earlier sessions");
    m_oDatabase = OpenDatabase(Primary().Address());
    m_oClient.Run("SET client_min_messages = error; DROP SCHEMA IF EXISTS rows CASCADE");
    m_oClient.Run("CREATE SCHEMA rows; GRANT USAGE, CREATE ON SCHEMA rows TO PUBLIC; SET search_path = rows");
  }

  std::string Error() const { return m_oDatabase->LastError().ErrorText; }
  auto OpenTable(const std::string& sName) {
    auto oTable = Table(*m_oDatabase, "rows", sName);
    EXPECT_TRUE(oTable->Open()) << Error();
    return oTable;
  }
  /// What the connection of the instance does at the moment, as the server sees it.
  std::string State() {
    return m_oClient.Text(
        "SELECT string_agg(state || coalesce(' ' || backend_xmin, ''), ',') FROM pg_stat_activity"
        " WHERE application_name = 'zelwbr3'");
  }

  Client m_oClient{Primary().Address()};
  std::shared_ptr<ZELLib3::Database> m_oDatabase;
};

/// The statement that makes rows.base(k, v), or the view "seen" of it.
class PostgresRowsOf : public PostgresRows, public testing::WithParamInterface<const char*> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(
    , PostgresRowsOf,
    testing::Values("CREATE TABLE base(k int, v text)", "CREATE TABLE base(k int PRIMARY KEY, v text)",
                    "CREATE TABLE base(v text, k int, PRIMARY KEY (v, k))",
                    "CREATE TABLE base(k float8, v text COLLATE \"POSIX\" UNIQUE NOT NULL)",
                    // Another order than that of the operators, or none that is the column's.
                    "CREATE TABLE base(k int, v text NOT NULL); CREATE UNIQUE INDEX ON base(v text_pattern_ops, k);"
                    "CREATE UNIQUE INDEX ON base(v COLLATE \"C\"); CREATE UNIQUE INDEX ON base(k) WHERE k > 5;"
                    "CREATE UNIQUE INDEX ON base(v DESC); CREATE UNIQUE INDEX ON base(lower(v))",
                    "CREATE TYPE hue AS ENUM ('dark'); CREATE TABLE base(k int, v text, h hue DEFAULT 'dark', \"c0\" "
                    "text DEFAULT 'x', PRIMARY KEY (h, k))",
                    "CREATE TABLE base(k int, v text, PRIMARY KEY (k)) PARTITION BY RANGE (k);"
                    "CREATE TABLE p1 PARTITION OF base FOR VALUES FROM (-9999) TO (0);"
                    "CREATE TABLE p2 PARTITION OF base DEFAULT",
                    "CREATE TABLE base(k int PRIMARY KEY, v text); CREATE TABLE child(PRIMARY KEY (k)) INHERITS (base)",
                    "CREATE TABLE base(k int, v text); CREATE VIEW seen AS SELECT * FROM base ORDER BY v"));

// Each row is delivered once, through several blocks.
TEST_P(PostgresRowsOf, AnyKindAreAllDeliveredOnce) {
  m_oClient.Run(GetParam());
  const bool bView = std::string(GetParam()).find("VIEW") != std::string::npos;
  for (const int iRows : {0, 1, 200, 201, 1500}) {
    SCOPED_TRACE(iRows);
    m_oClient.Run("TRUNCATE base; INSERT INTO base(k, v) SELECT i * 7 % 1501 - 700, 'v' || i FROM generate_series(1, " +
                  std::to_string(iRows) + ") AS i");
    const auto oTable = OpenTable(bView ? "SEEN" : "base");
    EXPECT_EQ(iRows == 0, oTable->IsEmpty());
    EXPECT_EQ(iRows > 200, oTable->HasMore()) << "exactly when there are rows after the block";
    Rows oRows = ReadAll(*oTable);
    ASSERT_EQ(std::size_t(iRows), oRows.size()) << Error();
    std::ranges::sort(oRows);
    EXPECT_TRUE(std::ranges::adjacent_find(oRows) == oRows.end());
  }
}

TEST_F(PostgresRows, OthersChangeATableThatIsReadByItsKey) {
  m_oClient.Run(
      "CREATE TABLE t(a int, b text, PRIMARY KEY (a, b)); INSERT INTO t SELECT i, 'b' FROM generate_series(2, "
      "2000, 2) AS i");
  const auto oTable = OpenTable("t");
  Rows oRows = ReadBlock(*oTable);
  for (int i = 0; oTable->HasMore(); ++i) {
    EXPECT_EQ("idle", State()) << "nothing is open";
    // What has been read goes, and something comes before it and after it.
    m_oClient.Run("DELETE FROM t WHERE a = 2 + " + std::to_string(2 * i) + "; INSERT INTO t VALUES (1 + " +
                  std::to_string(2 * i) + ", 'new'), (1999 - " + std::to_string(2 * i) + ", 'new')");
    ASSERT_TRUE(oTable->ReadMore()) << Error();
    for (auto& oRow : ReadBlock(*oTable)) oRows.push_back(oRow);
  }
  EXPECT_EQ(1000, std::ranges::count(oRows, "b", [](const auto& o) { return o[1]; }));
  EXPECT_TRUE(std::ranges::is_sorted(oRows, {}, [](const auto& o) { return std::stoi(o[0]); }));
}

TEST_F(PostgresRows, ACursorIsOpenWhileBlocksFollowOneAnotherOnly) {
  m_oClient.Run("CREATE VIEW seen AS SELECT i FROM generate_series(1, 2000) AS i");
  const auto oView = OpenTable("seen");
  EXPECT_EQ("idle", State());
  ASSERT_TRUE(oView->ReadMore() && oView->ReadMore());
  EXPECT_TRUE(State().starts_with("idle in transaction")) << State();
  oView->Pause();
  EXPECT_EQ("idle", State());
  ASSERT_TRUE(oView->ReadMore());
  EXPECT_TRUE(m_oDatabase->Sessions()->Refresh());
  EXPECT_EQ("idle", State()) << "another question ends it";
  // So does the end of the connection, and nothing is lost.
  ASSERT_TRUE(oView->ReadMore());
  m_oClient.Run("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE application_name = 'zelwbr3'");
  Await([&] { return State().empty(); }, "the end of the session");
  ReadAll(*oView);
  EXPECT_EQ(2000, oView->RowCount()) << Error();
  EXPECT_EQ("idle", State());
}

TEST_F(PostgresRows, RowsBeforeAFailureAreShown) {
  m_oClient.Run(
      "CREATE VIEW fails AS SELECT i, 1 / (1150 - i) AS q FROM generate_series(1, 2000) AS i;"
      "CREATE VIEW fails_soon AS SELECT i, 1 / (50 - i) AS q FROM generate_series(1, 2000) AS i");
  for (const auto& [sName, lRows] : {std::pair("fails", 1149), std::pair("fails_soon", 49)}) {
    const auto oView = OpenTable(sName);
    while (oView->RowCount() < lRows) ASSERT_TRUE(oView->ReadMore()) << Error();
    EXPECT_EQ(lRows, oView->RowCount());
    EXPECT_TRUE(oView->HasMore());
    EXPECT_FALSE(oView->ReadMore());
    EXPECT_NE(std::string::npos, Error().find("division by zero")) << Error();
  }
  EXPECT_EQ("idle", State());
}

TEST_F(PostgresRows, LongValuesAreCutAndBlocksBounded) {
  m_oClient.Run(
      "CREATE TABLE long AS SELECT repeat('ä', 2000000) AS t, decode(repeat('ab', 3000000), 'hex') AS b,"
      " jsonb_build_object('a', repeat('y', 2000000)) AS j, ROW(NULL, NULL)::record IS NULL AS n;"
      "CREATE TABLE many AS SELECT i, repeat('x', 1000000) AS t FROM generate_series(1, 30) AS i;"
      "CREATE VIEW seen AS SELECT * FROM many");
  const Rows oLong = ReadTable(*m_oDatabase, "rows", "long");
  EXPECT_EQ((std::size_t{1} << 20) + 20, oLong[0][0].size());
  EXPECT_TRUE(oLong[0][0].ends_with("ää … (4000000 bytes)"));
  EXPECT_EQ("3000000 bytes: AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB …", oLong[0][1]);
  EXPECT_TRUE(oLong[0][2].starts_with("{\"a\": \"yy") && oLong[0][2].ends_with(" … (2000009 bytes)"));
  EXPECT_EQ("true", oLong[0][3]);
  for (const char* sName : {"many", "seen"}) {
    const auto oTable = OpenTable(sName);
    EXPECT_LE(oTable->RowCount(), 5) << "some MB at a time";
    ReadBlock(*oTable);
    while (oTable->HasMore()) {
      const int lBefore = oTable->RowCount();
      ASSERT_TRUE(oTable->ReadMore()) << Error();
      EXPECT_LE(ReadBlock(*oTable).size(), 5u);
      EXPECT_GT(oTable->RowCount(), lBefore);
    }
    EXPECT_EQ(30, oTable->RowCount());
  }
}

// Reading them as a superuser would run what somebody else has written, in views and
// in casts.
TEST_F(PostgresRows, ASuperuserRunsNobodyElsesCode) {
  Client oOther(Primary().Address("ordinary"));
  oOther.Run(
      "SET search_path = rows; "
      "CREATE FUNCTION trap(int) RETURNS int LANGUAGE plpgsql AS $$ BEGIN RAISE 'trapped'; END $$;"
      "CREATE VIEW bait AS SELECT trap(1); CREATE TYPE pair AS (x int, y int);"
      "CREATE FUNCTION trap_text(pair) RETURNS text LANGUAGE plpgsql AS $$ BEGIN RAISE 'trapped'; END $$;"
      "CREATE CAST (pair AS text) WITH FUNCTION trap_text(pair) AS IMPLICIT;"
      "CREATE DOMAIN small AS int");
  m_oClient.Run("CREATE VIEW through AS SELECT * FROM bait; GRANT SELECT ON through TO ordinary");
  oOther.Run(
      "CREATE TABLE plain(p pair, s small PRIMARY KEY); INSERT INTO plain SELECT ROW(i, i)::pair, i FROM "
      "generate_series(1, 300) AS i; CREATE VIEW own AS SELECT 1 AS one; ALTER DOMAIN small ADD CHECK (trap(VALUE) > "
      "0) NOT VALID");
  for (const char* sName : {"bait", "through", "own"}) {
    EXPECT_FALSE(Table(*m_oDatabase, "rows", sName)->Open());
    EXPECT_NE(std::string::npos, Error().find("no superuser")) << Error();
  }
  EXPECT_EQ(300u, ReadTable(*m_oDatabase, "rows", "plain").size());
  EXPECT_EQ("(7,7)", ReadTable(*m_oDatabase, "rows", "plain")[6][0]);
  const auto oDatabase = OpenDatabase(Primary().Address("ordinary"));
  EXPECT_EQ((Rows{{"1"}}), ReadTable(*oDatabase, "rows", "own"));
}

TEST_F(PostgresRows, AnotherThreadEndsALongBlock) {
  m_oClient.Run(
      "CREATE VIEW slow AS SELECT i, CASE WHEN i > 2 THEN pg_sleep(60) IS NULL END AS s FROM "
      "generate_series(1, 300) AS i; CREATE VIEW stuck AS SELECT pg_sleep(60) IS NULL");
  for (const auto& [sName, bAny] : {std::pair("slow", true), std::pair("stuck", false)}) {
    std::thread oStopper([&] {
      Client oClient(Primary().Address());
      Await(
          [&] {
            return oClient.Text(
                       "SELECT wait_event FROM pg_stat_activity WHERE application_name = 'zelwbr3'"
                       " AND state = 'active'") == "PgSleep";
          },
          "the wait");
      m_oDatabase->Interrupt();
    });
    const auto oView = Table(*m_oDatabase, "rows", sName);
    EXPECT_EQ(bAny, oView->Open()) << "rows that have arrived are shown";
    oStopper.join();
    EXPECT_EQ(bAny ? 2 : 0, oView->RowCount());
    EXPECT_TRUE(bAny || Error().find("interrupted") != std::string::npos) << Error();
  }
}

TEST_F(PostgresRows, NamesAreFoundAsTheUsersOwnSessionFindsThem) {
  m_oClient.Run(
      "CREATE TABLE \"Two\"(upper int); CREATE TABLE two(lower int); CREATE SCHEMA IF NOT EXISTS ordinary;"
      "GRANT ALL ON SCHEMA ordinary TO ordinary; DROP TABLE IF EXISTS ordinary.mine;"
      "CREATE TABLE ordinary.mine AS SELECT 1; GRANT SELECT ON ordinary.mine TO PUBLIC");
  EXPECT_EQ("upper", OpenTable("Two")->ColumnName(0));
  EXPECT_EQ("lower", OpenTable("TWO")->ColumnName(0));
  const auto oDatabase = OpenDatabase(Primary().Address("ordinary"));
  EXPECT_EQ((Rows{{"1"}}), ReadTable(*oDatabase, "", "MINE"));
  EXPECT_FALSE(Table(*m_oDatabase, "", "mine")->Open());
  EXPECT_FALSE(Table(*oDatabase, "rows", "two")->Open());
  EXPECT_NE(std::string::npos, oDatabase->LastError().ErrorText.find("permission denied"));
  for (const auto& [sName, sWhy] : {std::pair("SYNONYMS", "no synonyms"), std::pair("SNAPSHOTS", "no snapshots"),
                                    std::pair("NOTHING", "no such system table")}) {
    EXPECT_FALSE(Table(*m_oDatabase, "SYSDD", sName)->Open());
    EXPECT_NE(std::string::npos, Error().find(sWhy)) << Error();
  }
}
