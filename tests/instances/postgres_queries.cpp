// Each statement that is built in, as each user and on both kinds of servers.

#include "tests/instances/PostgresServers.h"
#include "zelwbr3/instances/postgres/connection/Queries.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <gtest/gtest.h>

#include <map>

using namespace ZELWbr3::Postgres;
using PostgresServers::Client;

namespace {

/// Parameters for the statements that have some.
const std::map<std::string, Connection::Parameters> kParameters = {
    {"reading.wal", {"0/2000000", "1048576"}},
    {"relation", {"", "pg_class", "{pg_catalog}"}},
    {"relation.columns", {"1259"}},
    {"key", {"1259"}},
};

class PostgresQueries : public testing::TestWithParam<std::tuple<const char*, bool>> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(, PostgresQueries,
                         testing::Combine(testing::Values("postgres", "monitor", "ordinary"), testing::Bool()),
                         [](const auto& oInfo) {
                           return std::string(std::get<0>(oInfo.param)) +
                                  (std::get<1>(oInfo.param) ? "OnTheStandby" : "");
                         });

// A statement that waited for the lock would fail: the session waits for 250 ms.
TEST_P(PostgresQueries, AnswerWhileATableIsLocked) {
  const auto& [sUser, bOnStandby] = GetParam();
  Client oLocker(PostgresServers::Primary().Address());
  oLocker.Run(
      "DROP SCHEMA IF EXISTS locks CASCADE; CREATE SCHEMA locks; SET search_path = locks;"
      "CREATE TABLE locked(id serial PRIMARY KEY, name text DEFAULT 'a' CHECK (name > ''), long int GENERATED ALWAYS AS"
      " (length(name)) STORED, up int REFERENCES locked);"
      "CREATE INDEX ON locked(lower(name)); CREATE INDEX ON locked(up) WHERE up > 1; CREATE INDEX twice ON "
      "locked(name);"
      "CREATE INDEX again ON locked(name); CREATE VIEW seen AS SELECT * FROM locked;"
      "CREATE MATERIALIZED VIEW kept AS SELECT * FROM locked; CREATE STATISTICS pair ON name, up FROM locked;"
      "INSERT INTO locked(name) SELECT 'n' FROM generate_series(1, 10000); GRANT SELECT ON locked TO PUBLIC");
  oLocker.Run("ANALYZE locked");
  oLocker.Run("BEGIN; LOCK TABLE locked IN ACCESS EXCLUSIVE MODE");
  Client(PostgresServers::Primary().Address()).Run("SELECT pg_switch_wal()");  // the standby hears of it
  auto& oServer = bOnStandby ? PostgresServers::Standby() : PostgresServers::Primary();
  Client oClient(oServer.Address());
  PostgresServers::Await(
      [&] {
        return oClient.Text(
                   "SELECT count(*) FROM pg_locks WHERE relation = to_regclass('locks.locked')"
                   " AND mode = 'AccessExclusiveLock'") == "1";
      },
      "the lock");

  Server oShown(oServer.Address(sUser), {});
  int lRun = 0;
  oShown.Use([&](Connection& oConnection) {
    for (const Query& oQuery : Queries::All()) {
      if (!oQuery.IsUsable(oShown.Rights()) || oQuery.Name == "session") continue;
      const auto it = kParameters.find(oQuery.Name);
      SCOPED_TRACE(oQuery.Name);
      try {
        const Result o = oConnection.Execute(oQuery.For(oShown.Rights()), "trying " + oQuery.Name,
                                             it == kParameters.end() ? Connection::Parameters() : it->second);
        EXPECT_GT(o.Columns(), 0);
      } catch (const ServerError& oError) {
        ADD_FAILURE() << oError.what();
      }
      ++lRun;
    }
  });
  EXPECT_GT(lRun, 60);
}
