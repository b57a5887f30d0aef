#include "zelwbr3/instances/common/analyzer/Process.h"

#include <signal.h>
#include <spawn.h>
#include <sys/poll.h>
#include <sys/wait.h>

#include <algorithm>
#include <stdexcept>

// glibc 2.36 forgot to say so in the header; later ones say it twice then.
extern "C" {
#include <sys/pidfd.h>
}

namespace ZELWbr3::Instances {

namespace {

using Clock = std::chrono::steady_clock;

/// True when there is something to read, or the end; false when the time is up.
bool WaitToRead(int lDescriptor, Clock::time_point dUntil) {
  using namespace std::chrono;
  for (;;) {
    const auto dLeft = std::max(0ms, ceil<milliseconds>(dUntil - Clock::now()));
    pollfd oPoll{lDescriptor, POLLIN, 0};
    const int iReady = poll(&oPoll, 1, static_cast<int>(dLeft.count()));
    if (iReady > 0) return true;
    if (iReady < 0 && errno != EINTR) RaiseSystemError("poll");
    if (iReady == 0) return false;
  }
}

/// How a program starts: with the signals as a shell would give them, whatever
/// the host has done to its own.
class Attributes {
 public:
  Attributes() {
    posix_spawnattr_init(&m_oAttributes);
    sigset_t oSignals;
    sigemptyset(&oSignals);
    posix_spawnattr_setsigmask(&m_oAttributes, &oSignals);
    for (const int lSignal : {SIGTERM, SIGINT, SIGPIPE, SIGCHLD}) sigaddset(&oSignals, lSignal);
    posix_spawnattr_setsigdefault(&m_oAttributes, &oSignals);
    posix_spawnattr_setflags(&m_oAttributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~Attributes() { posix_spawnattr_destroy(&m_oAttributes); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  operator const posix_spawnattr_t*() const { return &m_oAttributes; }

 private:
  posix_spawnattr_t m_oAttributes{};
};

class FileActions {
 public:
  explicit FileActions(int lStandardError) {
    posix_spawn_file_actions_init(&m_oActions);
    posix_spawn_file_actions_addopen(&m_oActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&m_oActions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&m_oActions, lStandardError, STDERR_FILENO);
  }
  ~FileActions() { posix_spawn_file_actions_destroy(&m_oActions); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  operator const posix_spawn_file_actions_t*() const { return &m_oActions; }

 private:
  posix_spawn_file_actions_t m_oActions{};
};

int Spawn(const std::vector<std::string>& arguments, int lStandardError) {
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& sArgument : arguments) argv.push_back(const_cast<char*>(sArgument.c_str()));
  argv.push_back(nullptr);
  pid_t lProcess = 0;
  errno = posix_spawn(&lProcess, argv[0], FileActions(lStandardError), Attributes(), argv.data(), environ);
  if (errno != 0) RaiseSystemError(arguments[0]);
  return lProcess;
}

/// Reads to the end, or until the time is up, which it answers with false.
bool ReadAll(int lPipe, std::string& sText, Clock::time_point dUntil) {
  char buffer[4096];
  while (WaitToRead(lPipe, dUntil)) {
    const ssize_t lRead = read(lPipe, buffer, sizeof buffer);
    if (lRead == 0) return true;
    if (lRead > 0) sText.append(buffer, static_cast<std::size_t>(lRead));
  }
  return false;
}

}  // namespace

void RunProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds dTimeout) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) RaiseSystemError("pipe");
  const Descriptor oRead(ends[0], "pipe");
  int lProcess = 0;
  {
    const Descriptor oWrite(ends[1], "pipe");
    lProcess = Spawn(arguments, oWrite);
  }
  std::string sText;
  const bool bEnded = ReadAll(oRead, sText, Clock::now() + dTimeout);
  if (!bEnded) kill(lProcess, SIGKILL);
  int iStatus = 0;
  // A host that lets the system collect its children leaves nothing to ask:
  // then a text is a failure.
  while (waitpid(lProcess, &iStatus, 0) < 0) {
    if (errno == EINTR) continue;
    iStatus = sText.empty() ? 0 : 1;
    break;
  }
  if (!bEnded) throw std::runtime_error(arguments[0] + ": did not end in time");
  if (iStatus == 0) return;
  while (!sText.empty() && sText.back() == '\n') sText.pop_back();
  throw std::runtime_error(sText.empty() ? arguments[0] + ": failed without a message" : sText);
}

RunningProcess::RunningProcess(int lProcess)
    : m_sAbout("process " + std::to_string(lProcess)), m_oProcess(pidfd_open(lProcess, 0), m_sAbout) {}

void RunningProcess::AskToEnd() const {
  if (pidfd_send_signal(m_oProcess, SIGTERM, nullptr, 0) != 0 && errno != ESRCH) RaiseSystemError(m_sAbout);
}

bool RunningProcess::WaitForEnd(std::chrono::milliseconds dTimeout) const {
  return WaitToRead(m_oProcess, Clock::now() + dTimeout);
}

}  // namespace ZELWbr3::Instances
