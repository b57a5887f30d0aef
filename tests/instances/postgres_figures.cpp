// The figures, against what the server answers somebody else.

#include "tests/instances/PostgresServers.h"
#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"
#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>

using PostgresServers::Await;
using PostgresServers::Client;
using PostgresServers::Server;
using ZELWbr3::Postgres::OpenDatabase;
using ZELWbr3::Postgres::Options;
using namespace std::chrono_literals;

namespace {

std::shared_ptr<ZELLib3::Database> Open(const std::string& sAddress, const std::string& sStateFolder = {}) {
  Options oOptions;
  oOptions.ReadingLifetime = 0ms;
  if (!sStateFolder.empty()) oOptions.Observations = std::make_shared<ZELWbr3::SQLite::StateStore>(sStateFolder);
  return OpenDatabase(sAddress, oOptions);
}

long long PagesOf(long long lBytes) { return (lBytes + 8191) / 8192; }

}  // namespace

TEST(PostgresFigures, TheStateAgreesWithTheServer) {
  Server oServer("archive_mode=on\narchive_command='false'\nlog_statement=all\nlog_min_duration_statement=0\n");
  Client oClient(oServer.Address());
  oClient.Run("CREATE TABLE t(i int)");
  oClient.Run("INSERT INTO t SELECT generate_series(1, 1000)");
  Client oIdle(oServer.Address("ordinary"));
  const auto oDatabase = Open(oServer.Address("monitor"));
  const auto oState = oDatabase->StateInfo();
  EXPECT_EQ(PagesOf(oClient.Number("SELECT sum(pg_database_size(oid)) FROM pg_database")), oState->DataPerm());
  EXPECT_EQ(3, oState->SessionsUsed());
  EXPECT_EQ(oClient.Number("SHOW max_connections"), oState->SessionsMax());
  EXPECT_NEAR(oClient.Number("SELECT 100 * sum(blks_hit) / sum(blks_hit + blks_read) FROM pg_stat_database"),
              static_cast<int>(oState->CacheHitRate()), 1);
  EXPECT_EQ(oClient.Number("SELECT setting FROM pg_settings WHERE name = 'shared_buffers'"), oState->CacheTotal());
  EXPECT_EQ(oClient.Text("SHOW data_directory"), oDatabase->RunDirectory());
  EXPECT_EQ(oClient.Number("SHOW port"), oDatabase->InstanceNumber());
  EXPECT_TRUE(oState->AutoLog());
  EXPECT_TRUE(oState->DBTrace());
  EXPECT_TRUE(oState->CmdMon());
  EXPECT_FALSE(oState->ResMon());
  // On this machine the disk is what there is; its limits count.
  EXPECT_GT(oState->DataTotal(), oState->DataUsed());
  EXPECT_EQ(95, oState->BarThresholds()[2]);
  // Unless the user may not know the size of a database.
  oClient.Run("CREATE DATABASE hidden");
  oClient.Run("REVOKE CONNECT ON DATABASE hidden FROM PUBLIC");
  Options oOptions;
  oOptions.DataDirectory = oServer.DataDirectory();
  const auto oPartly = OpenDatabase(oServer.Address("ordinary"), oOptions)->StateInfo();
  EXPECT_EQ(oPartly->DataUsed(), oPartly->DataTotal());
  EXPECT_EQ(101, oPartly->BarThresholds()[2]);
  // The sawtooth of checkpoints is no reason to warn, a dead archive is.
  EXPECT_EQ(101, oState->BarThresholds()[5]);
  oClient.Run("ALTER SYSTEM SET max_wal_size = '2MB'");
  oServer.Reload();
  for (int i = 0; i < 4; ++i) oClient.Run("INSERT INTO t SELECT generate_series(1, 10); SELECT pg_switch_wal()");
  Await([&] { return Open(oServer.Address("monitor"))->StateInfo()->BarThresholds()[5] == 100; }, "a log that is held");
}

TEST(PostgresFigures, TemporaryFilesAndInvalidIndexesAreCounted) {
  Server oServer;
  Client oClient(oServer.Address());
  oClient.Run("CREATE TABLE t AS SELECT i % 10 AS i FROM generate_series(1, 100) AS i");
  EXPECT_NE("", oClient.Try("CREATE UNIQUE INDEX CONCURRENTLY bad ON t(i)"));
  const auto oDatabase = Open(oServer.Address());
  EXPECT_EQ(1, oDatabase->StateInfo()->BadIndexes());
  // A sort that is under way keeps its file as long as the cursor is open.
  oClient.Run("SET work_mem = '64kB'");
  oClient.Run("BEGIN; DECLARE c CURSOR FOR SELECT * FROM generate_series(1, 500000) AS i ORDER BY -i");
  oClient.Run("FETCH 1 FROM c");
  EXPECT_GT(oDatabase->StateInfo()->DataTemp(), 100);
}

TEST(PostgresFigures, ParametersTellValuesSourcesWaitingOnesAndObservedChanges) {
  Server oServer;
  const ZELWbr3::Testing::TempFolder oFolder;
  Client oClient(oServer.Address());
  const auto oDatabase = Open(oServer.Address(), oFolder.Path("state"));
  const auto oParameters = oDatabase->Parameters();
  ASSERT_TRUE(oParameters->Load());
  EXPECT_EQ(oClient.Text("SHOW shared_buffers"), oParameters->Item("shared_buffers")->Value());
  // What the connection has set for itself is not the server's.
  EXPECT_EQ("off", oParameters->Item("default_transaction_read_only")->Value());
  EXPECT_EQ("0", oParameters->Item("statement_timeout")->Value());

  oClient.Run("ALTER SYSTEM SET work_mem = '7MB'");
  oClient.Run("ALTER SYSTEM SET max_connections = 55");
  oServer.Reload();
  Await([&] { return oParameters->Load() && oParameters->Item("work_mem")->Value() == "7MB"; }, "the new value");
  const auto oMemory = oParameters->Item("work_mem");
  EXPECT_NE(std::string::npos, oMemory->Explanation().find("postgresql.auto.conf, line ")) << oMemory->Explanation();
  EXPECT_TRUE(oDatabase->ParameterHistory()->Open()) << oDatabase->LastError().ErrorText;
  ASSERT_EQ(1, oMemory->HistoryCount());
  EXPECT_EQ("7MB", oMemory->HistoryNewValue(1));
  const auto oConnections = oParameters->Item("max_connections");
  EXPECT_EQ(oClient.Text("SHOW max_connections"), oConnections->Value());
  EXPECT_EQ("55", oConnections->NewValue());
  const auto oOthers = Open(oServer.Address("ordinary"))->Parameters();
  ASSERT_TRUE(oOthers->Load());
  EXPECT_EQ("(changed; takes effect at the next restart)", oOthers->Item("max_connections")->NewValue());
}

TEST(PostgresFigures, SessionsTellWhoWaitsForWhom) {
  Server oServer;
  Client oBlocker(oServer.Address());
  Client oWaiting(oServer.Address("ordinary"));
  Client oWitness(oServer.Address());
  oBlocker.Run("CREATE TABLE t(i int); GRANT ALL ON t TO ordinary");
  oBlocker.Run("BEGIN; LOCK t");
  oWaiting.Send("SELECT * FROM t");
  Await([&] { return oWitness.Number("SELECT count(*) FROM pg_locks WHERE NOT granted") == 1; }, "the lock");
  const auto oSessions = Open(oServer.Address("monitor"))->Sessions();
  ASSERT_TRUE(oSessions->Refresh());
  bool bFound = false;
  for (int i = 1; i <= oSessions->Count(); ++i) {
    const auto oSession = oSessions->Item(i);
    if (oSession->Field1() != std::to_string(oWaiting.Process())) continue;
    bFound = true;
    EXPECT_EQ("ordinary@postgres", oSession->Field3());
    EXPECT_TRUE(oSession->Field5().ends_with("blocked by " + std::to_string(oBlocker.Process()))) << oSession->Field5();
    EXPECT_TRUE(oSession->IsActive().value_or(false));
    EXPECT_TRUE(oSession->Detail().ends_with("SELECT * FROM t")) << oSession->Detail();
  }
  EXPECT_TRUE(bFound);
  // Others' sessions are hidden from an ordinary user, their number is not.
  const auto oHidden = Open(oServer.Address("ordinary"))->Sessions();
  ASSERT_TRUE(oHidden->Refresh());
  EXPECT_EQ(5, oHidden->Count());
}

TEST(PostgresFigures, AreasTellTablespacesAndWhatKeepsTheLog) {
  Server oServer("max_wal_size=2MB\n");
  Client oClient(oServer.Address());
  oClient.Run("SELECT pg_create_physical_replication_slot('left_behind', true)");
  for (int i = 0; i < 4; ++i) {
    oClient.Run("CREATE TABLE IF NOT EXISTS t(i int); INSERT INTO t VALUES(1)");
    oClient.Run("SELECT pg_switch_wal()");
  }
  const auto oDatabase = Open(oServer.Address());
  const auto oVolumes = oDatabase->DataArea()->Volumes();
  ASSERT_EQ(2, oVolumes->Count());
  EXPECT_EQ("pg_default", oVolumes->Item(1)->Name());
  EXPECT_EQ(PagesOf(oClient.Number("SELECT pg_tablespace_size('pg_default')")), oVolumes->Item(1)->UsedSize());
  EXPECT_LT(oVolumes->CurrentSize(), oVolumes->Item(1)->Size() + oVolumes->Item(2)->Size())
      << "the disk they share counts once";
  const auto oLog = oDatabase->LogArea()->Volumes()->Item(1);
  EXPECT_TRUE(oLog->Info2().starts_with("slot left_behind keeps ")) << oLog->Info2();
  EXPECT_EQ(ZELLib3::Switch::Off, oDatabase->LogSettings()->AutoOverwrite()) << "the slot keeps the log";
  // A slot that nobody reads is a standby that is gone.
  EXPECT_EQ(1, oDatabase->HotStandbyRole());
  EXPECT_TRUE(oDatabase->HotStandbyWarning());
}

TEST(PostgresFigures, AStandbyAndItsPrimaryTellOfEachOther) {
  Server oPrimary;
  const auto oStandby = Server::StandbyOf(oPrimary);
  const auto oMaster = Open(oPrimary.Address("monitor"));
  const auto oFollower = Open(oStandby->Address("monitor"));
  Await([&] { return !oMaster->HotStandbyWarning() && !oFollower->HotStandbyWarning(); }, "streaming");
  EXPECT_EQ(1, oMaster->HotStandbyRole());
  ASSERT_EQ(2u, oMaster->HotStandby()->Nodes().size());
  const std::string sText = oMaster->HotStandby()->Nodes()[1].StateText;
  EXPECT_TRUE(sText.starts_with("streaming, async")) << sText;
  EXPECT_EQ(2, oFollower->HotStandbyRole());
  EXPECT_EQ(ZELLib3::Status::Online, oFollower->StateInfo()->Status());
  EXPECT_EQ("Online (standby, streaming)", oFollower->StateInfo()->StateText());
  EXPECT_TRUE(oFollower->HotStandby()->Nodes()[1].Own);

  Client(oStandby->Address()).Run("SELECT pg_wal_replay_pause()");
  Await([&] { return oFollower->StateInfo()->StateText().starts_with("Online (standby, replay paused"); }, "the pause");
  EXPECT_TRUE(oFollower->HotStandbyWarning());
  oStandby->Stop();
  Await([&] { return oMaster->HotStandbyWarning(); }, "the standby's end");
}

TEST(PostgresFigures, CachesAndActivityCount) {
  Server& oServer = PostgresServers::Primary();
  Client oClient(oServer.Address());
  const auto oDatabase = Open(oServer.Address());
  const auto oCaches = oDatabase->Caches();
  ASSERT_TRUE(oCaches->Refresh());
  EXPECT_EQ(oClient.Number("SELECT setting FROM pg_settings WHERE name = 'shared_buffers'") * 8,
            oCaches->DataCacheSize());
  EXPECT_EQ("shared_buffers", oCaches->DataCacheParam()->Name());
  EXPECT_GT(oCaches->CatalogCacheSize(), 0);
  const auto oActivity = oDatabase->Activity();
  ASSERT_TRUE(oActivity->Refresh());
  const double dCommits = oActivity->SQLCounter(7);
  EXPECT_GT(dCommits, 0);
  EXPECT_EQ(-1, oActivity->SQLCounter(16)) << "nothing counts statements here";
  oClient.Run("SELECT 1");
  Client oLocker(oServer.Address());
  oLocker.Run("BEGIN; LOCK pg_largeobject");
  Await([&] { return oActivity->Refresh() && oActivity->SQLCounter(7) > dCommits; }, "another commit");
  EXPECT_GE(oActivity->LockCounter(4), 1);
}
