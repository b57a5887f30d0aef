#include "zelwbr3/instances/common/Process.h"

#include <signal.h>
#include <spawn.h>
#include <sys/poll.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>

// glibc 2.36 forgot to say so in the header; later ones say it twice then.
extern "C" {
#include <sys/pidfd.h>
}

namespace ZELWbr3::Instances {

namespace {

using Clock = std::chrono::steady_clock;

/// Waits until there is something to read from one of them, or its end; false
/// when the time is up. Their revents then say which.
template <std::size_t Count>
bool WaitToRead(std::array<pollfd, Count>& polls, Clock::time_point dUntil) {
  using namespace std::chrono;
  for (;;) {
    const auto dLeft = std::max(0ms, ceil<milliseconds>(dUntil - Clock::now()));
    const int iReady = poll(polls.data(), Count, static_cast<int>(dLeft.count()));
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

/// No input, and both outputs into pipes.
class FileActions {
 public:
  FileActions(int lOutput, int lError) {
    posix_spawn_file_actions_init(&m_oActions);
    posix_spawn_file_actions_addopen(&m_oActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&m_oActions, lOutput, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&m_oActions, lError, STDERR_FILENO);
  }
  ~FileActions() { posix_spawn_file_actions_destroy(&m_oActions); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  operator const posix_spawn_file_actions_t*() const { return &m_oActions; }

 private:
  posix_spawn_file_actions_t m_oActions{};
};

/// Texts as the system takes them; they must outlive it.
std::vector<char*> Pointers(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const std::string& sText : texts) pointers.push_back(const_cast<char*>(sText.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> EnvironmentWith(const std::vector<std::string>& changes) {
  std::vector<std::string> environment = changes;
  const auto IsChanged = [&](const std::string& sVariable) {
    const std::string sName = sVariable.substr(0, sVariable.find('=') + 1);
    return std::any_of(changes.begin(), changes.end(), [&](const auto& sChange) { return sChange.starts_with(sName); });
  };
  for (char** pVariable = environ; *pVariable; ++pVariable) {
    if (!IsChanged(*pVariable)) environment.emplace_back(*pVariable);
  }
  return environment;
}

/// What a program writes to one of its outputs.
class Output {
 public:
  Output() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) RaiseSystemError("pipe");
    m_oRead = Descriptor(ends[0], "pipe");
    m_oWrite = Descriptor(ends[1], "pipe");
  }
  int WriteEnd() const { return *m_oWrite; }
  /// Once the program has it.
  void CloseWriteEnd() { m_oWrite.reset(); }
  /// To wait with; not waited for any more once the end has come.
  pollfd Poll() const { return {m_bEnd ? -1 : static_cast<int>(*m_oRead), POLLIN, 0}; }
  void Read() {
    char buffer[4096];
    const ssize_t lRead = read(*m_oRead, buffer, sizeof buffer);
    if (lRead > 0) m_sText.append(buffer, static_cast<std::size_t>(lRead));
    m_bEnd = lRead == 0;
  }
  bool IsAtEnd() const { return m_bEnd; }
  std::string& Text() { return m_sText; }

 private:
  std::optional<Descriptor> m_oRead;
  std::optional<Descriptor> m_oWrite;
  std::string m_sText;
  bool m_bEnd = false;
};

int Spawn(const ProgramCall& oCall, Output& oOutput, Output& oError) {
  const std::string& sProgram = oCall.Arguments.at(0);
  const std::vector<std::string> environment = EnvironmentWith(oCall.Environment);
  pid_t lProcess = 0;
  errno = posix_spawn(&lProcess, sProgram.c_str(), FileActions(oOutput.WriteEnd(), oError.WriteEnd()), Attributes(),
                      Pointers(oCall.Arguments).data(), Pointers(environment).data());
  if (errno != 0) RaiseSystemError(sProgram);
  oOutput.CloseWriteEnd();
  oError.CloseWriteEnd();
  return lProcess;
}

/// Reads both to the end, or until the time is up, which it answers with false.
bool ReadAll(Output& oOutput, Output& oError, Clock::time_point dUntil) {
  while (!oOutput.IsAtEnd() || !oError.IsAtEnd()) {
    std::array polls{oOutput.Poll(), oError.Poll()};
    if (!WaitToRead(polls, dUntil)) return false;
    if (polls[0].revents != 0) oOutput.Read();
    if (polls[1].revents != 0) oError.Read();
  }
  return true;
}

}  // namespace

std::string RunProgram(const ProgramCall& oCall, std::chrono::milliseconds dTimeout) {
  Output oOutput;
  Output oError;
  const int lProcess = Spawn(oCall, oOutput, oError);
  const bool bEnded = ReadAll(oOutput, oError, Clock::now() + dTimeout);
  if (!bEnded) kill(lProcess, SIGKILL);
  std::string& sError = oError.Text();
  int iStatus = 0;
  // A host that lets the system collect its children leaves nothing to ask:
  // then a text is a failure.
  while (waitpid(lProcess, &iStatus, 0) < 0) {
    if (errno == EINTR) continue;
    iStatus = sError.empty() ? 0 : 1;
    break;
  }
  const std::string& sProgram = oCall.Arguments[0];
  if (!bEnded) throw std::runtime_error(sProgram + ": did not end in time");
  if (iStatus == 0) return std::move(oOutput.Text());
  while (!sError.empty() && sError.back() == '\n') sError.pop_back();
  throw std::runtime_error(sError.empty() ? sProgram + ": failed without a message" : sError);
}

RunningProcess::RunningProcess(int lProcess)
    : m_sAbout("process " + std::to_string(lProcess)), m_oProcess(pidfd_open(lProcess, 0), m_sAbout) {}

void RunningProcess::AskToEnd() const {
  if (pidfd_send_signal(m_oProcess, SIGTERM, nullptr, 0) != 0 && errno != ESRCH) RaiseSystemError(m_sAbout);
}

bool RunningProcess::WaitForEnd(std::chrono::milliseconds dTimeout) const {
  std::array polls{pollfd{m_oProcess, POLLIN, 0}};
  return WaitToRead(polls, Clock::now() + dTimeout);
}

}  // namespace ZELWbr3::Instances
