#include "tests/instances/PostgresServers.h"
#include "zelwbr3/instances/postgres/local/ServerControl.h"

#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace PostgresServers;
using namespace ZELWbr3::Postgres;
namespace fs = std::filesystem;

namespace {

ServerControl ControlOf(const Server& oServer) {
  setenv("XDG_STATE_HOME", oServer.Folder().c_str(), 1);
  return {LocalServer(oServer.DataDirectory()), [](auto dTime) { poll(nullptr, 0, static_cast<int>(dTime.count())); }};
}

}  // namespace

TEST(PostgresOperations, AServerOfThisMachineIsSeenFromOutside) {
  PostgresServers::Server oServer;
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
  PostgresServers::Server oServer;
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
