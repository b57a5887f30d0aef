#include "tests/instances/PostgresServers.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/testing/Contract.h"

using namespace ZELWbr3::Testing;

using PostgresServers::Client;
using PostgresServers::Primary;
using PostgresServers::Server;
using PostgresServers::Standby;

namespace {

/// The primary with something to show, which its standby has, too.
Server& Furnished() {
  Server& oPrimary = Primary();
  static const bool bOnce = [&] {
    Client(oPrimary.Address())
        .Run(
            "CREATE SCHEMA contract; GRANT USAGE ON SCHEMA contract TO PUBLIC;"
            "CREATE DOMAIN contract.short AS text CHECK (length(VALUE) < 100);"
            "CREATE TABLE contract.keyed(b contract.short, a int, amount numeric, note text, photo bytea, list int[],"
            " made timestamptz DEFAULT now(), sold boolean, PRIMARY KEY (a, note));"
            "INSERT INTO contract.keyed SELECT 'b' || i, i / 7, i * 0.5, 'note ' || i, '\\x00ff', ARRAY[i], now(),"
            " CASE WHEN i % 3 > 0 THEN i % 3 = 1 END FROM generate_series(1, 450) AS i;"
            "CREATE TABLE contract.keyless AS SELECT i, NULL::text AS nothing FROM generate_series(1, 450) AS i;"
            "CREATE VIEW contract.seen AS SELECT a, note FROM contract.keyed ORDER BY note DESC;"
            "GRANT SELECT ON ALL TABLES IN SCHEMA contract TO PUBLIC; ANALYZE contract.keyed");
    return true;
  }();
  EXPECT_TRUE(bOnce);
  return oPrimary;
}

/// The standby as soon as it has what its primary has.
Server& Followed() {
  const std::string sWritten = Client(Furnished().Address()).Text("SELECT pg_current_wal_lsn()");
  Client oStandby(Standby().Address());
  PostgresServers::Await([&] { return oStandby.Text("SELECT pg_last_wal_replay_lsn() >= '" + sWritten + "'") == "t"; },
                         "the standby");
  return Standby();
}

ContractCase Case(const char* sName, Server& (*fnServer)(), const char* sUser, const char* sOwner, const char* sTable) {
  return {sName, [=](const auto&) { return ZELWbr3::Postgres::OpenDatabase(fnServer().Address(sUser)); }, sOwner,
          sTable, true};
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Postgres, Contract,
                         testing::Values(Case("CompositeKey", Furnished, "postgres", "contract", "keyed"),
                                         Case("WithoutKey", Furnished, "monitor", "CONTRACT", "KEYLESS"),
                                         Case("View", Furnished, "ordinary", "contract", "seen"),
                                         Case("SystemTable", Furnished, "ordinary", "SYSDD", "COLUMNS"),
                                         Case("OnTheStandby", Followed, "monitor", "contract", "keyed")),
                         ContractCase::Named);
