#include "tests/host/Run.h"

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <utility>

namespace ZELWbr3::Testing {

namespace {

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& sText : texts) pointers.push_back(sText.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

Ended RunZelreport(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) {
  std::vector<std::string> argv = {ZELREPORT};
  argv.insert(argv.end(), arguments.begin(), arguments.end());
  std::vector<std::string> envp = environment;  // the first of a name counts
  for (char** p = environ; *p != nullptr; ++p) envp.emplace_back(*p);

  std::array<std::array<int, 2>, 2> pipes{};
  posix_spawn_file_actions_t oActions;
  posix_spawn_file_actions_init(&oActions);
  for (int i = 0; i < 2; ++i) {
    if (pipe(pipes[i].data()) != 0) throw std::runtime_error("No pipe");
    posix_spawn_file_actions_adddup2(&oActions, pipes[i][1], i + 1);
    posix_spawn_file_actions_addclose(&oActions, pipes[i][0]);
    posix_spawn_file_actions_addclose(&oActions, pipes[i][1]);
  }
  pid_t iProcess = 0;
  const int iError =
      posix_spawn(&iProcess, ZELREPORT, &oActions, nullptr, Pointers(argv).data(), Pointers(envp).data());
  posix_spawn_file_actions_destroy(&oActions);
  for (auto& oPipe : pipes) close(oPipe[1]);
  if (iError != 0) throw std::runtime_error("Cannot run " ZELREPORT);

  Ended oEnded;
  std::string* texts[] = {&oEnded.Out, &oEnded.Err};
  const auto oEnd = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  int iOpen = 2;
  while (iOpen > 0) {
    using std::chrono::milliseconds;
    const auto oLeft = std::chrono::duration_cast<milliseconds>(oEnd - std::chrono::steady_clock::now()).count();
    std::array<pollfd, 2> polled = {{{pipes[0][0], POLLIN, 0}, {pipes[1][0], POLLIN, 0}}};
    if (oLeft <= 0 || poll(polled.data(), 2, static_cast<int>(oLeft)) == 0) {
      kill(iProcess, SIGKILL);
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (polled[i].revents == 0) continue;
      char sBuffer[65536];
      const auto iRead = read(pipes[i][0], sBuffer, sizeof sBuffer);
      if (iRead > 0) {
        texts[i]->append(sBuffer, static_cast<std::size_t>(iRead));
      } else {
        close(std::exchange(pipes[i][0], -1));  // poll skips it from now on
        --iOpen;
      }
    }
  }
  for (auto& oPipe : pipes) {
    if (oPipe[0] >= 0) close(oPipe[0]);
  }
  int iStatus = 0;
  waitpid(iProcess, &iStatus, 0);
  oEnded.Exit = WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : 128 + WTERMSIG(iStatus);
  return oEnded;
}

}  // namespace ZELWbr3::Testing
