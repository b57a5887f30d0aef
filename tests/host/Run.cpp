#include "tests/host/Run.h"

#include "zelwbr3/testing/TempFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <stdexcept>

namespace ZELWbr3::Testing {

namespace {

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& sText : texts) pointers.push_back(sText.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

Ended RunProgram(const std::string& sProgram, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment) {
  std::vector<std::string> argv = {"timeout", "-s", "KILL", "60", sProgram};
  argv.insert(argv.end(), arguments.begin(), arguments.end());
  std::vector<std::string> envp = environment;  // the first of a name counts
  for (char** p = environ; *p != nullptr; ++p) envp.emplace_back(*p);

  const TempFolder oFolder;
  posix_spawn_file_actions_t oActions;
  posix_spawn_file_actions_init(&oActions);
  for (const auto& [iFile, sName] : {std::pair(STDOUT_FILENO, "out"), {STDERR_FILENO, "err"}}) {
    posix_spawn_file_actions_addopen(&oActions, iFile, oFolder.Path(sName).c_str(), O_WRONLY | O_CREAT, 0600);
  }
  pid_t iProcess = 0;
  const int iError =
      posix_spawnp(&iProcess, "timeout", &oActions, nullptr, Pointers(argv).data(), Pointers(envp).data());
  posix_spawn_file_actions_destroy(&oActions);
  if (iError != 0) throw std::runtime_error("Cannot run timeout " + sProgram);
  int iStatus = 0;
  waitpid(iProcess, &iStatus, 0);
  return {WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : 128 + WTERMSIG(iStatus), oFolder.Read("out"),
          oFolder.Read("err")};
}

}  // namespace ZELWbr3::Testing
