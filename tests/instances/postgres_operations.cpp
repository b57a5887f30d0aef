#include "tests/instances/PostgresServers.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/postgres/connection/Statement.h"
#include "zelwbr3/instances/postgres/local/ServerControl.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>

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
  AsOwner([&] {
    std::ofstream(oServer.DataDirectory() + "/patroni.dynamic.json") << "{}";
    EXPECT_EQ("", ControlOf(oServer).WhyNot()) << "it was here, but does not run";
    fs::copy_file("/bin/sleep", oServer.Folder() + "/patroni");
    const pid_t iPatroni = fork();
    if (iPatroni == 0) {
      execl((oServer.Folder() + "/patroni").c_str(), "patroni", "30", nullptr);
      _exit(127);
    }
    Await([&] { return ControlOf(oServer).WhyNot().starts_with("Patroni would start it again"); }, "it is seen");
    kill(iPatroni, SIGKILL);
    waitpid(iPatroni, nullptr, 0);
  });
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
    EXPECT_EQ("still busy after 1 s: " + sBusy, oOperated.Done(oOperated->Admin()));
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

TEST(PostgresOperations, AnInterruptAtAnyStatementEndsAdminAndAllIsPutBack) {
  Server oServer;
  const std::string sLimits = Limits(oServer);
  Client oBusy(oServer.Address("monitor"));
  oBusy.Run("BEGIN; SELECT 1");
  PostgresDatabase* pDatabase = nullptr;
  int iStatement = 0;
  int iInterrupted = 0;
  int iLook = 0;
  Options oOptions{.Patience = std::chrono::milliseconds(100)};
  oOptions.Sending = [&](const auto& oStatement) {
    if (pDatabase == nullptr) return;
    if (++iStatement == iInterrupted) pDatabase->Interrupt();
    if (oStatement.SQL.find("pg_terminate_backend") != std::string::npos) iLook = iStatement;
  };
  const Operated oOperated(oServer, oOptions);
  pDatabase = &*oOperated;
  ExpectPart("still busy", oOperated.Done(oOperated->Admin()));
  const int iLast = iStatement;
  for (iInterrupted = 1; iInterrupted <= iLast; ++iInterrupted) {
    iStatement = iLook = 0;
    const std::string sDone = oOperated.Done(oOperated->Admin());
    SCOPED_TRACE("interrupted at statement " + std::to_string(iInterrupted) + ": " + sDone);
    EXPECT_LE(iLook, iInterrupted) << "it went on";
    EXPECT_EQ(sLimits, Limits(oServer));
  }
  pDatabase = nullptr;
  EXPECT_EQ("1", oBusy.Text("SELECT 1"));
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
    ExpectPart("still busy after 1 s: process " + std::to_string(oBusy.Process()),
               oOperated.Done(oOperated->Shutdown()));
    EXPECT_EQ(5, oOperated.Status());
    EXPECT_EQ("postgres -1, template0 -1, template1 -1", Limits(oServer));
  });
  oBusy.Run("COMMIT");
  AsOwner([&] {
    const Operated oOperated(oServer);
    EXPECT_EQ("ok", oOperated.Done(oOperated->AutoLogOff()));
    EXPECT_EQ("ok", oOperated.Done(oOperated->Admin()));
    EXPECT_EQ("ok", oOperated.Done(oOperated->Shutdown()));
    EXPECT_EQ(2, oOperated.Status());
    EXPECT_EQ("Offline", oOperated->StateInfo()->StateText());
    EXPECT_EQ("the server does not run", oOperated.Done(oOperated->ShutdownQuick()));
    EXPECT_EQ("ok", oOperated.Done(oOperated->Admin()));
    EXPECT_EQ(3, oOperated.Status());
    EXPECT_EQ("ok", oOperated.Done(oOperated->ShutdownQuick()));
    EXPECT_EQ("ok", oOperated.Done(oOperated->Online()));
    EXPECT_EQ(5, oOperated.Status()) << "and everybody is let in";
    Client oClient(oServer.Address());
    EXPECT_EQ("1", oClient.Text("SELECT count(*) FROM t"));
    oClient.Run("BEGIN; INSERT INTO t VALUES(2)");
    EXPECT_EQ("ok", oOperated.Done(oOperated->ShutdownQuick()));
    const Operated oAgain(oServer);
    EXPECT_EQ(2, oAgain.Status()) << "where its files are is remembered";
    EXPECT_EQ("ok", oAgain.Done(oAgain->Online()));
    EXPECT_EQ("1", Client(oServer.Address()).Text("SELECT count(*) FROM t"));
  });
  oServer.Stop();
  oServer.Start();
  oServer.Kill();
  AsOwner([&] {
    const Operated oOperated(oServer);
    EXPECT_EQ("Offline (crashed, recovers at start)", oOperated->StateInfo()->StateText());
    EXPECT_EQ("ok", oOperated.Done(oOperated->Online()));
    EXPECT_EQ(5, oOperated.Status());
  });
}

namespace {

/// A server that archives, with a base backup, and rows of a table from before and
/// after a moment.
class Restorable {
 public:
  explicit Restorable(const std::string& sArchiveCommand, const std::function<void(const Server&)>& oMakeBackup)
      : m_oServer("archive_mode = on\narchive_command = '" + sArchiveCommand + "'\n") {
    Client oClient(m_oServer.Address());
    oClient.Run("CREATE TABLE t(v text); INSERT INTO t VALUES('before the backup')");
    BeforeBackup = Now(oClient);
    AwaitNextSecond(oClient);
    oMakeBackup(m_oServer);
    Completed = Now(oClient);
    AwaitNextSecond(oClient);
    oClient.Run("INSERT INTO t VALUES('kept')");
    const std::string sSegment = oClient.Text("SELECT pg_walfile_name(pg_current_wal_insert_lsn())");
    oClient.Run("SELECT pg_switch_wal()");
    Await([&] { return oClient.Text("SELECT last_archived_wal FROM pg_stat_archiver") >= sSegment; }, "it is archived");
    // From here on, the log is only in the server's own folder.
    oClient.Run("ALTER SYSTEM SET archive_command = ''");
    m_oServer.Reload();
    AwaitNextSecond(oClient);
    Until = Now(oClient);
    AwaitNextSecond(oClient);
    oClient.Run("INSERT INTO t VALUES('lost')");
  }

  Server& Instance() { return m_oServer; }
  std::string Rows() const {
    return Client(m_oServer.Address()).Text("SELECT string_agg(v, ', ' ORDER BY ctid) FROM t");
  }

  ZELLib3::Date BeforeBackup;  ///< local time, as all
  ZELLib3::Date Completed;
  ZELLib3::Date Until;

 private:
  static ZELLib3::Date Now(Client& oClient) {
    return ZELWbr3::Calendar::LocalTime(oClient.Number("SELECT floor(extract(epoch FROM clock_timestamp()))::bigint"));
  }
  /// Dates are whole seconds.
  static void AwaitNextSecond(Client& oClient) {
    oClient.Run("SELECT pg_sleep(1.01 - extract(epoch FROM clock_timestamp()) % 1)");
  }

  Server m_oServer;
};

constexpr char kCopy[] = "cp %p %ARCHIVE/%f";

void MakeBaseBackup(const Server& oServer, const std::string& sFolder) {
  RunAsOwner({Program("pg_basebackup"), "-D", sFolder, "-c", "fast", "-d", oServer.Address()});
}

}  // namespace

TEST(PostgresOperations, RestartUntilLosesExactlyWhatCameAfter) {
  const std::string sBackup = MakeFolder() + "/backup";
  Restorable oRestorable(kCopy, [&](const Server& oServer) { MakeBaseBackup(oServer, sBackup); });
  Server& oServer = oRestorable.Instance();
  const std::string sRestore = "cp " + oServer.Archive() + "/%f \"%p\"";
  AsOwner([&] {
    PostgresDatabase* pDatabase = nullptr;
    bool bInterrupts = false;
    Options oOptions;
    oOptions.Sending = [&](const auto& oStatement) {
      if (bInterrupts && oStatement.SQL == "COMMIT") pDatabase->Interrupt();
    };
    const Operated oOperated(oServer, oOptions);
    pDatabase = &*oOperated;
    ExpectPart("no backup is known", oOperated.Done(oOperated->RestartUntil(oRestorable.Until)));
    ASSERT_TRUE(oOperated->RegisterBackup(sBackup, oRestorable.Completed, "base", "false " + sRestore));
    auto dFuture = oRestorable.Until;
    dFuture.Year += 1;
    ExpectPart("has not passed yet", oOperated.Done(oOperated->RestartUntil(dFuture)));
    for (const auto& dEarly : {oRestorable.BeforeBackup, oRestorable.Completed}) {
      ExpectPart("no backup had ended at", oOperated.Done(oOperated->RestartUntil(dEarly)));
    }
    EXPECT_EQ("before the backup, kept, lost", oRestorable.Rows());

    // The log cannot be fetched: all is as it was, and it runs.
    const std::string sFailed = oOperated.Done(oOperated->RestartUntil(oRestorable.Until));
    ExpectPart("the server does not start: ", sFailed);
    EXPECT_EQ("before the backup, kept, lost", oRestorable.Rows());
    EXPECT_EQ(5, oOperated.Status());

    ASSERT_TRUE(oOperated->RegisterBackup(sBackup, oRestorable.Completed, "base", sRestore));
    Client oWitness(oServer.Address());
    bInterrupts = true;
    ExpectPart("interrupted", oOperated.Done(oOperated->RestartUntil(oRestorable.Until)));
    bInterrupts = false;
    EXPECT_EQ("1", oWitness.Text("SELECT 1")) << "it was not stopped";
    EXPECT_EQ("ok", oOperated.Done(oOperated->Admin()));
    EXPECT_EQ("ok", oOperated.Done(oOperated->RestartUntil(oRestorable.Until)));
    EXPECT_EQ("before the backup, kept", oRestorable.Rows());
    EXPECT_EQ(5, oOperated.Status());
    Client oClient(oServer.Address());
    oClient.Run("INSERT INTO t VALUES('new')");
    EXPECT_EQ("", oClient.Text("SHOW recovery_target_time")) << "it runs without the settings of the recovery";
    ExpectPart("Before the restart until", oOperated.History());
    int iOld = 0;
    for (const auto& oEntry : fs::directory_iterator(oServer.Folder())) {
      iOld += oEntry.path().filename().string().starts_with("data.before-") ? 1 : 0;
    }
    EXPECT_EQ(1, iOld);
  });
}

TEST(PostgresOperations, HistoryNamesEachBackupOnce) {
  Server oServer(std::string("archive_mode = on\narchive_command = '") + kCopy + "'\n");
  const std::string sBackup = MakeFolder() + "/backup";
  MakeBaseBackup(oServer, sBackup);
  Client oClient(oServer.Address());
  Await([&] { return oClient.Number("SELECT archived_count FROM pg_stat_archiver") > 0; }, "a segment is archived");
  AsOwner([&] {
    const Operated oOperated(oServer);
    const auto dNow = ZELWbr3::Calendar::Now();
    EXPECT_FALSE(oOperated->RegisterBackup("", dNow, "x"));
    EXPECT_FALSE(oOperated->RegisterBackup("/nowhere/b.tar", {}, "x"));
    ASSERT_TRUE(oOperated->RegisterBackup("/nowhere/b.tar", {2020, 1, 2, 3, 4, 5}, "old tape"));
    const std::string sHistory = oOperated.History();
    ExpectPart("1 BASE BACKUP pg_basebackup base backup\n", sHistory);
    ExpectPart("3 ARCHIVE LOG 0", sHistory);
    EXPECT_TRUE(sHistory.ends_with("1 BACKUP old tape\n")) << sHistory;
    ASSERT_TRUE(oOperated->RegisterBackup(sBackup, dNow, "base"));
    EXPECT_EQ(std::string::npos, oOperated.History().find("BASE BACKUP")) << "it is the one that was registered";
    std::map<std::string, std::string> files;
    const auto oHistory = oOperated->History();
    ASSERT_TRUE(oHistory->Open());
    while (const auto oItem = oHistory->NextItem()) files[oItem->Label] = oItem->Fields[2].Value;
    EXPECT_EQ("there", files["base"]);
    EXPECT_EQ("not there", files["old tape"]);
  });
}

TEST(PostgresOperations, RestartUntilTakesABackupOfPgBackRest) {
  if (!fs::exists("/usr/bin/pgbackrest")) GTEST_SKIP() << "there is no pgbackrest";
  const std::string sFolder = MakeFolder();
  setenv("PGBACKREST_CONFIG", (sFolder + "/pgbackrest.conf").c_str(), 1);
  const auto PgBackRest = [](const std::string& sCommand) {
    return RunAsOwner({"/usr/bin/pgbackrest", "--stanza=main", sCommand});
  };
  Restorable oRestorable("pgbackrest --stanza=main archive-push %p", [&](const Server& oServer) {
    std::ofstream(sFolder + "/pgbackrest.conf")
        << "[global]\nrepo1-path=" << sFolder << "/repo\nlog-path=" << sFolder << "\nlock-path=" << sFolder
        << "\nspool-path=" << sFolder
        << "\nlog-level-console=warn\nstart-fast=y\ncompress-type=none\n[main]\npg1-path=" << oServer.DataDirectory()
        << "\npg1-port=" << oServer.Port() << "\npg1-socket-path=" << oServer.Folder() << "\npg1-user=postgres\n";
    PgBackRest("stanza-create");
    PgBackRest("backup");
  });
  AsOwner([&] {
    const Operated oOperated(oRestorable.Instance());
    ExpectPart("1 BACKUP 20", oOperated.History());
    EXPECT_EQ(std::string::npos, oOperated.History().find("BASE BACKUP")) << "its label file is of the same";
    EXPECT_EQ("ok", oOperated.Done(oOperated->Shutdown()));
    ExpectPart("no backup had ended at", oOperated.Done(oOperated->RestartUntil(oRestorable.BeforeBackup)));
    EXPECT_EQ(2, oOperated.Status()) << "it was offline before";
    EXPECT_EQ("ok", oOperated.Done(oOperated->RestartUntil(oRestorable.Until)));
    EXPECT_EQ("before the backup, kept", oRestorable.Rows());
  });
  unsetenv("PGBACKREST_CONFIG");
}

TEST(PostgresOperations, TheAnalyzerGetsNoPasswordByItsArgumentsAndKeepsOneConnection) {
  Server oServer;
  setenv("XDG_STATE_HOME", oServer.Folder().c_str(), 1);
  PostgresDatabase oDatabase("host=" + oServer.Folder() + " port=" + std::to_string(oServer.Port()) +
                                 " user=monitor dbname=postgres password='se cret'",
                             {.AnalyzerProgram = ZELANALYZER});
  const auto oAnalyzer = oDatabase.Analyzer();
  EXPECT_EQ(2, oAnalyzer->State());
  ZELLib3::Analyzer::StartOptions oOptions;
  oOptions.Interval = 1;
  oOptions.Reconnect = true;
  ASSERT_TRUE(oAnalyzer->Start(oOptions)) << oDatabase.LastError().ErrorText;
  const std::string sProcess = "/proc/" + oAnalyzer->ProcessID();
  const auto Text = [&](const char* sFile) {
    std::ifstream oFile(sProcess + sFile, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(oFile), {});
  };
  ExpectPart("postgresql://?dbname=postgres&", Text("/cmdline"));
  EXPECT_EQ(std::string::npos, Text("/cmdline").find("cret")) << "every user may read the arguments";
  ExpectPart("PGPASSWORD=se cret", Text("/environ"));

  const auto Evaluations = [&] { return std::stoi(oAnalyzer->Info()); };
  const auto Await2More = [&] { Await([&, n = Evaluations()] { return Evaluations() >= n + 2; }, "it evaluates"); };
  Client oClient(oServer.Address());
  const std::string sOwn =
      "SELECT string_agg(pid::text, ' ') FROM pg_stat_activity WHERE usename = 'monitor' AND pid <> " +
      oClient.Text("SELECT pid FROM pg_stat_activity WHERE usename = 'monitor' ORDER BY backend_start");
  const std::string sConnection = oClient.Text(sOwn);
  EXPECT_EQ(std::string::npos, sConnection.find(' '));
  Await2More();
  EXPECT_EQ(sConnection, oClient.Text(sOwn));
  EXPECT_EQ("", oAnalyzer->ErrorText());
  oServer.Stop();
  Await([&] { return !oAnalyzer->ErrorText().empty(); }, "it notices that the server has gone");
  EXPECT_EQ(1, oAnalyzer->State());
  oServer.Start();
  Await([&] { return oAnalyzer->ErrorText().empty(); }, "it goes on");
  EXPECT_TRUE(oAnalyzer->Stop());
  EXPECT_EQ(2, oAnalyzer->State());
}
