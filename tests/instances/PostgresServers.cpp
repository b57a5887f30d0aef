#include "tests/instances/PostgresServers.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <stdexcept>

namespace PostgresServers {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{30};
constexpr uid_t kOwner = 65534;  ///< when root runs the tests

std::string ReadText(const std::string& sPath) {
  std::ifstream oFile(sPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(oFile), {}};
}

/// The first line of postmaster.pid; 0 when there is none.
int ProcessOf(const std::string& sDataDirectory) {
  return std::atoi(ReadText(sDataDirectory + "/postmaster.pid").c_str());
}

/// False also for one that has ended and whose parent has not taken note, and for
/// another program that has got its number.
bool IsServer(int iProcess) {
  const std::string sStat = ReadText("/proc/" + std::to_string(iProcess) + "/stat");
  const auto iState = sStat.rfind(')') + 2;
  return iProcess > 0 && sStat.find("(postgres)") != std::string::npos && sStat[iState] != 'Z';
}

bool WaitUntil(const std::function<bool()>& oIsTrue) {
  for (const auto dEnd = Clock::now() + kPatience; !oIsTrue(); poll(nullptr, 0, 5)) {
    if (Clock::now() > dEnd) return false;
  }
  return true;
}

/// Becomes the servers' owner for good.
void BecomeOwner() {
  if (geteuid() == 0 && (setgid(kOwner) != 0 || setuid(kOwner) != 0)) _exit(126);
}

/// The temporary folder of all servers. A process of its own waits for the end of
/// the test program, stops what still runs in the folder and removes it.
class Guarded {
 public:
  Guarded() {
    std::string sPattern = "/tmp/zelwbr3-pg-XXXXXX";  // the name of a socket is at most 107 bytes long
    int ends[2];
    if (!mkdtemp(sPattern.data()) || pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no folder " + sPattern);
    m_sPath = sPattern;
    chmod(m_sPath.c_str(), 0755);
    m_iProcess = fork();
    if (m_iProcess == 0) {
      close(ends[1]);
      for (const int iSignal : {SIGINT, SIGTERM, SIGHUP}) signal(iSignal, SIG_IGN);
      char cNothing;
      (void)!read(ends[0], &cNothing, 1);
      TidyUp();
      _exit(0);
    }
    close(ends[0]);
    m_iEnd = ends[1];
  }
  ~Guarded() {
    close(m_iEnd);
    waitpid(m_iProcess, nullptr, 0);
  }
  const std::string& Path() const { return m_sPath; }

 private:
  void TidyUp() const {
    std::error_code eIgnored;
    for (const auto& oEntry : fs::directory_iterator(m_sPath, eIgnored)) {
      const int iServer = ProcessOf(oEntry.path() / "data");
      if (IsServer(iServer) && kill(iServer, SIGQUIT) == 0) WaitUntil([&] { return !IsServer(iServer); });
    }
    fs::remove_all(m_sPath, eIgnored);
  }

  std::string m_sPath;
  pid_t m_iProcess;
  int m_iEnd;
};

const std::string& Root() {
  static const Guarded oRoot;
  return oRoot.Path();
}

/// Runs a program as the owner with its outputs in a file, and answers its
/// process. It ends with the test program.
pid_t Spawn(const std::vector<std::string>& arguments, const std::string& sOutput) {
  std::vector<char*> argv;
  for (const std::string& sArgument : arguments) argv.push_back(const_cast<char*>(sArgument.c_str()));
  argv.push_back(nullptr);
  const pid_t iProcess = fork();
  if (iProcess != 0) return iProcess;
  BecomeOwner();
  prctl(PR_SET_PDEATHSIG, SIGINT);
  umask(0077);
  const int iOutput = open(sOutput.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
  dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
  dup2(iOutput, STDOUT_FILENO);
  dup2(iOutput, STDERR_FILENO);
  close_range(STDERR_FILENO + 1, ~0U, 0);
  (void)!chdir("/");
  setenv("LC_ALL", "C", 1);
  execv(argv[0], argv.data());
  _exit(127);
}

std::string SettingsOf(const std::string& sFolder, int iPort) {
  return "unix_socket_directories = '" + sFolder + "'\nport = " + std::to_string(iPort) +
         "\nlisten_addresses = ''\nfsync = off\nsynchronous_commit = off\nfull_page_writes = off\n"
         "shared_buffers = 16MB\nmax_connections = 30\nmin_wal_size = 2MB\nmax_wal_size = 32MB\n"
         "log_line_prefix = '%m [%p] %u@%d %a '\nautovacuum_naptime = 1d\n";
}

int NextPort() {
  static int iPort = 54320;
  return ++iPort;
}

/// A data directory with the roles, which no server uses.
const std::string& Pristine() {
  static const std::string sFolder =
      [] {
        const std::string sNew = MakeFolder();
        const std::string sData = sNew + "/pristine";
        RunAsOwner({Program("initdb"), "-D", sData, "-U", "postgres", "-A", "trust", "-N", "--wal-segsize=1", "-E",
                    "UTF8", "--locale=C", "--no-instructions"});
        std::ofstream(sNew + "/roles.sql")
            << "CREATE ROLE monitor LOGIN IN ROLE pg_monitor;\nCREATE ROLE ordinary LOGIN;\n";
        const std::string sCommand =
            "exec \"$0\" --single -j -D \"$1\" -c fsync=off postgres <\"$2\"";  // reads statements from its input only
        RunAsOwner({"/bin/sh", "-c", sCommand, Program("postgres"), sData, sNew + "/roles.sql"});
        return sData;
      }();
  return sFolder;
}

}  // namespace

std::string Program(const std::string& sName) {
  static const std::string sFolder = [] {
    if (const char* sGiven = std::getenv("ZELWBR3_POSTGRES_BIN")) return std::string(sGiven);
    std::string sFound = RunAsOwner({"/usr/bin/pg_config", "--bindir"});
    return sFound.substr(0, sFound.find('\n'));
  }();
  return sFolder + "/" + sName;
}

std::string MakeFolder() {
  static int iFolder = 0;
  const std::string sFolder = Root() + "/" + std::to_string(++iFolder);
  fs::create_directory(sFolder);
  if (geteuid() == 0 && chown(sFolder.c_str(), kOwner, kOwner) != 0) throw std::runtime_error("chown " + sFolder);
  return sFolder;
}

void AsOwner(const std::function<void()>& oBody) {
  if (geteuid() != 0) return oBody();
  fflush(nullptr);
  const pid_t iProcess = fork();
  if (iProcess == 0) {
    BecomeOwner();
    try {
      oBody();
    } catch (const std::exception& oError) {
      ADD_FAILURE() << "raised: " << oError.what();
    }
    fflush(nullptr);
    _exit(testing::Test::HasFailure());
  }
  int iStatus = 0;
  waitpid(iProcess, &iStatus, 0);
  EXPECT_EQ(0, iStatus) << "in the process of the servers' owner, see above";
}

std::string RunAsOwner(const std::vector<std::string>& arguments) {
  const std::string sOutput = MakeFolder() + "/output";
  int iStatus = 0;
  waitpid(Spawn(arguments, sOutput), &iStatus, 0);
  std::string sText = ReadText(sOutput);
  if (iStatus != 0) throw std::runtime_error(arguments[0] + ": " + sText);
  return sText;
}

void Await(const std::function<bool()>& oIsTrue, const std::string& sWhat) {
  EXPECT_TRUE(WaitUntil(oIsTrue)) << "waited in vain: " << sWhat;
}

Client::Client(const std::string& sAddress) : m_oHandle(PQconnectdb(sAddress.c_str())) {
  if (PQstatus(m_oHandle.get()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(m_oHandle.get()));
  PQsetNoticeProcessor(
      m_oHandle.get(), [](void*, const char*) {}, nullptr);
}

Client::Result Client::Ask(const std::string& sSQL) {
  Result oResult(PQexec(m_oHandle.get(), sSQL.c_str()), &PQclear);
  const auto eStatus = PQresultStatus(oResult.get());
  if (eStatus == PGRES_COMMAND_OK || eStatus == PGRES_TUPLES_OK || eStatus == PGRES_EMPTY_QUERY) return oResult;
  throw std::runtime_error(sSQL + ": " + PQerrorMessage(m_oHandle.get()));
}

std::string Client::Text(const std::string& sSQL) {
  const Result oResult = Ask(sSQL);
  return PQntuples(oResult.get()) > 0 ? PQgetvalue(oResult.get(), 0, 0) : "";
}

std::string Client::Try(const std::string& sSQL) {
  try {
    Ask(sSQL);
    return "";
  } catch (const std::runtime_error& oError) {
    return oError.what();
  }
}

void Client::Send(const std::string& sSQL) {
  if (PQsendQuery(m_oHandle.get(), sSQL.c_str()) == 0) throw std::runtime_error(PQerrorMessage(m_oHandle.get()));
}

bool Client::IsOpen() { return PQconsumeInput(m_oHandle.get()) != 0 && PQstatus(m_oHandle.get()) == CONNECTION_OK; }

Server::Server(const std::string& sFolder, int iPort)
    : m_sFolder(sFolder), m_sData(sFolder + "/data"), m_iPort(iPort) {}

Server::Server(const std::string& sSettings) : Server(MakeFolder(), NextPort()) {
  RunAsOwner({"/bin/cp", "-a", Pristine(), m_sData});
  RunAsOwner({"/bin/mkdir", Archive()});
  Configure(SettingsOf(m_sFolder, m_iPort) + std::regex_replace(sSettings, std::regex("%ARCHIVE"), Archive()));
  Start();
}

std::unique_ptr<Server> Server::StandbyOf(Server& oPrimary) {
  std::unique_ptr<Server> oStandby(new Server(MakeFolder(), NextPort()));
  RunAsOwner({Program("pg_basebackup"), "-D", oStandby->m_sData, "-R", "-C", "-S", "standby", "-c", "fast", "-N", "-d",
              oPrimary.Address() + "&application_name=standby"});
  oStandby->Configure(SettingsOf(oStandby->m_sFolder, oStandby->m_iPort));
  oStandby->Start();
  Client oClient(oPrimary.Address());
  Await([&] { return oClient.Number("SELECT count(*) FROM pg_stat_replication WHERE state = 'streaming'") > 0; },
        "the standby streams");
  return oStandby;
}

Server::~Server() { End(SIGQUIT); }

std::string Server::Address(const std::string& sUser, const std::string& sDatabase) const {
  return "postgresql://" + sUser + "@/" + sDatabase + "?host=" + m_sFolder + "&port=" + std::to_string(m_iPort);
}

std::string Server::Log() const { return ReadText(m_sFolder + "/log"); }

int Server::Process() const { return ProcessOf(m_sData); }

void Server::Configure(const std::string& sLine) const {
  std::ofstream(m_sData + "/postgresql.conf", std::ios::app) << sLine << '\n';
}

void Server::Reload() const { kill(Process(), SIGHUP); }

void Server::Launch(const std::vector<std::string>& options) {
  Reap();
  std::vector<std::string> arguments = {Program("postgres"), "-D", m_sData};
  arguments.insert(arguments.end(), options.begin(), options.end());
  m_iChild = Spawn(arguments, m_sFolder + "/log");
}

void Server::Start(const std::vector<std::string>& options) {
  const auto IsReady = [&] { return PQping(Address().c_str()) == PQPING_OK; };
  for (int i = 0;; ++i) {
    const std::size_t iBefore = Log().size();
    Launch(options);
    if (WaitUntil([&] { return IsReady() || waitpid(m_iChild, nullptr, WNOHANG) != 0; }) && IsReady()) return;
    // Of one that was killed, a process may still be about to notice it.
    const bool bNotGone = Log().find("is still in use", iBefore) != std::string::npos;
    if (!bNotGone || i == 100) throw std::runtime_error("The server does not start: " + Log());
  }
}

void Server::Stop() { End(SIGINT); }

void Server::Kill() { End(SIGKILL); }

void Server::End(int iSignal) {
  const int iProcess = Process();
  if (IsServer(iProcess)) {
    kill(iProcess, iSignal);
    Await([&] { return !IsServer(iProcess); }, "the server ends");
  }
  Reap();
}

void Server::Reap() {
  if (m_iChild > 0 && waitpid(m_iChild, nullptr, WNOHANG) != 0) m_iChild = 0;
}

Server& Primary() {
  static Server oPrimary("max_replication_slots = 10\nwal_level = replica\nmax_prepared_transactions = 5\n");
  return oPrimary;
}

Server& Standby() {
  static const std::unique_ptr<Server> oStandby = Server::StandbyOf(Primary());
  return *oStandby;
}

}  // namespace PostgresServers
