#include "tests/instances/PostgresServers.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/postgres/local/ServerControl.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace PostgresServers;
using ZELWbr3::Postgres::LocalServer;
using ZELWbr3::Postgres::Options;
using ZELWbr3::Postgres::PostgresDatabase;
using ZELWbr3::Postgres::ServerControl;
namespace fs = std::filesystem;

namespace {

ServerControl ControlOf(const Server& oServer) {
  setenv("XDG_STATE_HOME", oServer.Folder().c_str(), 1);
  return {LocalServer(oServer.DataDirectory()), [](auto dTime) { poll(nullptr, 0, static_cast<int>(dTime.count())); }};
}

}  // namespace

TEST(PostgresOperations, AServerOfThisMachineIsSeenFromOutside) {
  Server oServer;
  const LocalServer oLocal(oServer.DataDirectory());
  {
    Client oClient(oServer.Address());
    const auto tStart = oClient.Number(
        "SELECT extract(epoch FROM backend_start)::bigint FROM pg_stat_activity WHERE pid = pg_backend_pid()");
    EXPECT_TRUE(LocalServer::RunsHere(oClient.Process(), tStart));
    EXPECT_FALSE(LocalServer::RunsHere(oClient.Process(), tStart - 60)) << "another machine has the number, too";
    EXPECT_FALSE(LocalServer::RunsHere(getpid(), tStart));
  }
  setenv("PGDATA", oServer.DataDirectory().c_str(), 1);
  AsOwner([&] {
    EXPECT_EQ(oServer.Process(), oLocal.Process());
    const auto oPostmaster = oLocal.Postmaster();
    EXPECT_EQ(oServer.Port(), oPostmaster->Port);
    EXPECT_EQ(oServer.Folder(), oPostmaster->SocketFolder);
    EXPECT_EQ("ready", oPostmaster->Status);
    EXPECT_EQ("in production", oLocal.ControlData("Database cluster state"));
    EXPECT_EQ(oServer.DataDirectory(), LocalServer::FromEnvironment(oServer.Port()));
    EXPECT_EQ("", LocalServer::FromEnvironment(oServer.Port() + 1));
  });
  if (geteuid() == 0) {
    EXPECT_EQ("only nobody can stop and start it, who owns " + oServer.DataDirectory(), ControlOf(oServer).WhyNot());
  }
  oServer.Kill();
  AsOwner([&] {
    EXPECT_TRUE(oLocal.Postmaster());
    EXPECT_EQ(std::nullopt, oLocal.Process()) << "it is a zombie or gone";
    EXPECT_EQ("in production", oLocal.ControlData("Database cluster state"));
    EXPECT_EQ(oServer.DataDirectory(), LocalServer::FromEnvironment(oServer.Port()));
  });
  unsetenv("PGDATA");
}

TEST(PostgresOperations, AServerStartsAgainWithItsConfigurationElsewhere) {
  Server oServer;
  oServer.Stop();
  const std::string sElsewhere = MakeFolder() + "/it's $HOME \"elsewhere\".conf";
  RunAsOwner({"/bin/mv", oServer.DataDirectory() + "/postgresql.conf", sElsewhere});
  oServer.Start({"-c", "config_file=" + sElsewhere, "--work-mem=5MB"});
  AsOwner([&] {
    ServerControl oControl = ControlOf(oServer);
    EXPECT_EQ("", oControl.WhyNot());
    oControl.Stop();
    EXPECT_EQ(PQPING_NO_RESPONSE, PQping(oServer.Address().c_str()));
    EXPECT_EQ("shut down", oControl.Server().ControlData("Database cluster state"));
    oControl.Stop();  // there is none
    oControl.Start();
    EXPECT_EQ("5MB", Client(oServer.Address()).Text("SHOW work_mem"));
    oControl.Stop();
    std::ofstream(sElsewhere, std::ios::app) << "shared_buffers = many\n";
    try {
      oControl.Start();
      ADD_FAILURE() << "it starts";
    } catch (const std::runtime_error& oError) {
      EXPECT_NE(std::string::npos, std::string(oError.what()).find("contains errors")) << oError.what();
    }
  });
}

namespace {

/// What a test does as the owner of a server of its own, with an instance of it.
class Operated {
 public:
  explicit Operated(const Server& oServer, Options oOptions = {}) : m_oServer(oServer) {
    setenv("XDG_STATE_HOME", oServer.Folder().c_str(), 1);
    oOptions.ReadingLifetime = {};
    oOptions.Observations = std::make_shared<ZELWbr3::SQLite::StateStore>("");
    m_oDatabase = std::make_shared<PostgresDatabase>(oServer.Address(), oOptions);
  }
  PostgresDatabase* operator->() const { return m_oDatabase.get(); }
  PostgresDatabase& operator*() const { return *m_oDatabase; }

  int Status() const { return m_oDatabase->StateInfo()->Status(); }
  /// "ok", or why not, without the server.
  std::string Done(bool bDone) const {
    const std::string sServer = m_oServer.Address() + ": ";
    const std::string sText = m_oDatabase->LastError().ErrorText;
    return bDone ? "ok" : sText.starts_with(sServer) ? sText.substr(sServer.size()) : sText;
  }
  /// The history's labels, newest first, each with what kind it is.
  std::string History() const {
    const auto oHistory = m_oDatabase->History();
    EXPECT_TRUE(oHistory->Open()) << m_oDatabase->LastError().ErrorText;
    std::string sText;
    while (const auto oItem = oHistory->NextItem()) {
      sText += std::to_string(oItem->Kind) + " " + oItem->Action + " " + oItem->Label + "\n";
    }
    return sText;
  }

 private:
  const Server& m_oServer;
  std::shared_ptr<PostgresDatabase> m_oDatabase;
};

const Options kImpatient{.Patience = std::chrono::milliseconds(300)};

std::string Limits(const Server& oServer) {
  return Client(oServer.Address())
      .Text("SELECT string_agg(datname || ' ' || datconnlimit, ', ' ORDER BY datname) FROM pg_database");
}

void ExpectPart(const std::string& sPart, const std::string& sText) {
  EXPECT_NE(std::string::npos, sText.find(sPart)) << sText;
}

std::string Refusal(const std::string& sAddress) {
  try {
    Client oClient(sAddress);
    return "";
  } catch (const std::runtime_error& oError) {
    return oError.what();
  }
}

}  // namespace

TEST(PostgresOperations, AdminLetsOnlySuperusersInAndOnlineRestoresEachLimit) {
  Server oServer;
  Client oOwner(oServer.Address());
  oOwner.Run("CREATE DATABASE \"Seven's\" CONNECTION LIMIT 7");
  const std::string sLimits = "Seven's 7, postgres -1, template0 -1, template1 -1";
  ASSERT_EQ(sLimits, Limits(oServer));
  Client oIdle(oServer.Address("ordinary"));
  auto oBusy = std::make_unique<Client>(oServer.Address("monitor"));
  oBusy->Run("BEGIN; SELECT 1");
  {
    const Operated oOperated(oServer, kImpatient);
    const std::string sBusy =
        "process " + std::to_string(oBusy->Process()) + " (monitor@postgres, idle in transaction)";
    EXPECT_EQ("these do not end their work: " + sBusy, oOperated.Done(oOperated->Admin()));
    EXPECT_EQ(5, oOperated.Status());
    EXPECT_EQ(sLimits, Limits(oServer)) << "all is put back";
    EXPECT_EQ("", Refusal(oServer.Address("ordinary")));
    EXPECT_EQ("1", oBusy->Text("SELECT 1"));
    oBusy.reset();
    EXPECT_EQ("ok", oOperated.Done(oOperated->Admin()));
    EXPECT_EQ(3, oOperated.Status());
    Await([&] { return !oIdle.IsOpen(); }, "the idle session ends");
    ExpectPart("too many connections", Refusal(oServer.Address("ordinary")));
    EXPECT_EQ("1", oOwner.Text("SELECT 1")) << "a superuser stays";
    EXPECT_EQ("Seven's 0, postgres 0, template0 -1, template1 0", Limits(oServer));
  }
  oServer.Stop();
  oServer.Start();
  const Operated oOther(oServer);
  EXPECT_EQ(3, oOther.Status()) << "it survives a restart";
  EXPECT_EQ("ok", oOther.Done(oOther->Admin()));
  EXPECT_EQ("ok", oOther.Done(oOther->Online()));
  EXPECT_EQ(5, oOther.Status());
  EXPECT_EQ(sLimits, Limits(oServer));
  EXPECT_EQ("0", Client(oServer.Address()).Text("SELECT count(*) FROM pg_db_role_setting"));
}

TEST(PostgresOperations, WhoCannotDoThemIsToldWhy) {
  const Operated oStandby(Standby());
  for (const auto pOperation : {&ZELLib3::Database::Admin, &ZELLib3::Database::Online, &ZELLib3::Database::Shutdown}) {
    EXPECT_EQ("a standby follows its primary: its state is changed there", oStandby.Done(((*oStandby).*pOperation)()));
  }
  PostgresDatabase oMonitor(Primary().Address("monitor"));
  EXPECT_FALSE(oMonitor.Admin());
  ExpectPart("only a superuser can do that", oMonitor.LastError().ErrorText);
  if (geteuid() != 0) return;
  const Operated oRoot(Primary());
  EXPECT_EQ("only nobody can stop and start it, who owns " + Primary().DataDirectory(), oRoot.Done(oRoot->Shutdown()));
  EXPECT_FALSE(oRoot->AutoLogOff());
  EXPECT_EQ("1", Client(Primary().Address()).Text("SELECT 1"));
}

TEST(PostgresOperations, OfflineWaitsForTransactionsAndOnlineStartsIt) {
  Server oServer;
  Client oBusy(oServer.Address());
  oBusy.Run("CREATE TABLE t(v int); BEGIN; INSERT INTO t VALUES(1)");
  AsOwner([&] {
    const Operated oOperated(oServer, kImpatient);
    ExpectPart("these do not end their work: process " + std::to_string(oBusy.Process()),
               oOperated.Done(oOperated->Shutdown()));
    EXPECT_EQ(5, oOperated.Status());
    EXPECT_EQ("postgres -1, template0 -1, template1 -1", Limits(oServer));
  });
  oBusy.Run("COMMIT");
  AsOwner([&] {
    const Operated oOperated(oServer);
    EXPECT_EQ("ok", oOperated.Done(oOperated->AutoLogOff()));
    EXPECT_EQ("ok", oOperated.Done(oOperated->Shutdown()));
    EXPECT_EQ(2, oOperated.Status());
    EXPECT_EQ("Offline", oOperated->StateInfo()->StateText());
    EXPECT_EQ("the server does not run", oOperated.Done(oOperated->ShutdownQuick()));
    EXPECT_EQ("ok", oOperated.Done(oOperated->Online()));
    EXPECT_EQ(5, oOperated.Status());
    Client oClient(oServer.Address());
    EXPECT_EQ("1", oClient.Text("SELECT count(*) FROM t"));
    oClient.Run("BEGIN; INSERT INTO t VALUES(2)");
    EXPECT_EQ("ok", oOperated.Done(oOperated->ShutdownQuick()));
    const Operated oAgain(oServer);
    EXPECT_EQ(2, oAgain.Status()) << "where its files are is remembered";
    EXPECT_EQ("ok", oAgain.Done(oAgain->Online()));
    EXPECT_EQ("1", Client(oServer.Address()).Text("SELECT count(*) FROM t"));
  });
}
