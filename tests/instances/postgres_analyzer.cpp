#include "tests/instances/PostgresServers.h"
#include "zelwbr3/instances/common/daemon/Figures.h"
#include "zelwbr3/instances/postgres/AnalyzedServer.h"
#include "zelwbr3/instances/postgres/server/Server.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"
#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace ZELWbr3;
using PostgresServers::Await;
using PostgresServers::Client;
using PostgresServers::Primary;
using Lines = std::vector<std::vector<std::string>>;

namespace {

/// A server as zelanalyzer evaluates it.
class PostgresAnalyzer : public testing::Test {
 protected:
  explicit PostgresAnalyzer(const std::string& sAddress = Primary().Address())
      : m_oServer(Postgres::AnalyzedServer(sAddress, {})) {}

  /// The lines of one more evaluation.
  const Lines& Evaluate(const std::string& sGroup) {
    const auto oFigures =
        Instances::Figures::Read(m_oServer, Instances::AnalyzerConfig::Read("", m_oServer.GroupNames()));
    EXPECT_EQ("", oFigures.Error);
    m_lines.clear();
    for (const auto& oLines : oFigures.Lines) {
      m_lines[oLines.File] = oLines.Lines;
      for (const auto& oLine : oLines.Lines) EXPECT_EQ(oLines.Columns.size(), oLine.size()) << oLines.File;
    }
    return m_lines[sGroup];
  }

  Testing::TempFolder m_oFolder;
  std::shared_ptr<SQLite::StateStore> m_oStore = std::make_shared<SQLite::StateStore>(m_oFolder.Path());
  Instances::EvaluatedInstance m_oServer;
  std::map<std::string, Lines> m_lines;
  Client m_oClient{Primary().Address()};
};

std::string NameOf(const std::vector<std::string>& oLine) { return oLine[1]; }

}  // namespace

TEST_F(PostgresAnalyzer, RatesAreThoseBetweenTwoEvaluations) {
  Client(Primary().Address()).Run("DROP TABLE IF EXISTS rated; CREATE TABLE rated(i int)");
  const auto Inserted = [&] { return m_oClient.Number("SELECT sum(tup_inserted) FROM pg_stat_database"); };
  const auto Insert = [&] {
    const auto lBefore = Inserted();
    Client(Primary().Address()).Run("INSERT INTO rated SELECT generate_series(1, 5000)");
    Await([&] { return Inserted() >= lBefore + 5000; }, "the server's statistics");
  };
  Insert();
  const Lines oNothing = {std::vector<std::string>(8)};
  EXPECT_EQ(oNothing, Evaluate("load")) << "nothing to compare with";
  Insert();
  EXPECT_GT(std::stod(Evaluate("load").at(0)[2]), 100);
  EXPECT_EQ("0", m_lines["load"].at(0)[1]) << "looking at a server rolls nothing back";
  EXPECT_GT(std::stod(m_lines["io"].at(0)[6]), 100000) << "bytes of the log";
  EXPECT_NE("", m_lines["io"].at(0)[0]);
  m_oClient.Run("SELECT pg_stat_reset()");
  EXPECT_EQ(oNothing, Evaluate("load")) << "the counters began anew";
  Insert();
  EXPECT_NE(oNothing, Evaluate("load"));
}

TEST_F(PostgresAnalyzer, ALockThatOthersWaitForIsABottleneck) {
  m_oClient.Run("DROP TABLE IF EXISTS contended; CREATE TABLE contended(i int)");
  m_oClient.Run("BEGIN; LOCK TABLE contended");
  Client oWaiting(Primary().Address());
  oWaiting.Send("SELECT * FROM contended");
  Await([&] { return Evaluate("sessions").at(0)[4] == "1"; }, "the session that waits");
  EXPECT_NE("0", m_lines["sessions"].at(0)[3]) << "the one with the lock is idle in its transaction";
  const auto Find = [&] {
    const auto& lines = Evaluate("bottlenecks");
    const auto it = std::ranges::find(lines, "Locks", NameOf);
    return it == lines.end() ? std::vector<std::string>() : *it;
  };
  Await([&] { return !Find().empty(); }, "the bottleneck");
  const auto oLine = Find();
  ASSERT_EQ(4u, oLine.size());
  EXPECT_EQ("2", oLine[0]);
  EXPECT_TRUE(oLine[2].starts_with("1 session waits for locks, longest ")) << oLine[2];
  EXPECT_TRUE(oLine[2].ends_with("blocked by process " + std::to_string(m_oClient.Process()))) << oLine[2];
  m_oClient.Run("ROLLBACK");
  EXPECT_TRUE(Find().empty());
}

TEST_F(PostgresAnalyzer, StandbysAndSlotsAreWatched) {
  PostgresServers::Standby();
  Await([&] { return !Evaluate("standby").empty() && m_lines["standby"][0][1] == "streaming"; }, "the standby");
  m_oClient.Run("SELECT pg_create_physical_replication_slot('left_behind', true)");
  m_oClient.Run("ALTER SYSTEM SET max_wal_size = '2MB'");
  m_oClient.Run("CREATE TABLE written AS SELECT repeat('x', 1000) FROM generate_series(1, 5000); DROP TABLE written");
  m_oClient.Run("SELECT pg_reload_conf()");
  m_oServer = Postgres::AnalyzedServer(Primary().Address(), {.Observations = m_oStore});
  const auto Find = [&] {
    const auto& lines = Evaluate("bottlenecks");
    return std::ranges::any_of(lines, [](const auto& o) { return o[2].starts_with("Slot left_behind keeps "); });
  };
  Await(Find, "the slot");
  m_oClient.Run("SELECT pg_drop_replication_slot('left_behind')");
  m_oClient.Run("ALTER SYSTEM RESET max_wal_size");
  m_oClient.Run("SELECT pg_reload_conf()");
  EXPECT_FALSE(Find());
  const std::string sKey = Postgres::Server(Primary().Address(), {}).Key();
  const auto IsNoticed = [&] {
    Evaluate("state");
    return !m_oStore->Changes(sKey).empty();
  };
  Await(IsNoticed, "the change of a parameter");
  EXPECT_EQ("max_wal_size 2MB", m_oStore->Changes(sKey)[0].Name + " " + m_oStore->Changes(sKey)[0].Value);
}
