#include "zelwbr3/instances/common/daemon/Daemonize.h"

#include "zelwbr3/instances/common/Descriptor.h"

#include <sys/stat.h>

#include <stdexcept>
#include <string>

namespace ZELWbr3::Instances {

namespace {

constexpr char kStarted = '+';  ///< what the new process reports; anything else is an error text
constexpr int kReport = 3;      ///< the descriptor it reports with

void Detach(int lReport) {
  setsid();
  (void)!chdir("/");  // no folder is kept from being unmounted
  umask(0077);
  if (dup2(lReport, kReport) < 0) RaiseSystemError("dup2");
  close_range(kReport + 1, ~0U, 0);
  const Descriptor oNull("/dev/null", O_RDWR);
  for (int lStream = STDIN_FILENO; lStream <= STDERR_FILENO; ++lStream) dup2(oNull, lStream);
}

bool Report(const std::string& sText) {
  const bool bRead = write(kReport, sText.data(), sText.size()) == static_cast<ssize_t>(sText.size());
  close(kReport);
  return bRead;
}

int Work(const std::function<int(const Started&)>& oWork, int lReport) {
  Detach(lReport);
  bool bStarted = false;
  try {
    return oWork([&] {
      bStarted = true;
      if (!Report({kStarted})) throw std::runtime_error("the program that started it has ended");
    });
  } catch (const std::exception& oError) {
    if (!bStarted) Report(oError.what());
    return 1;
  }
}

std::string ReadAll(int lPipe) {
  std::string sText;
  char buffer[4096];
  for (ssize_t n = 0; (n = read(lPipe, buffer, sizeof buffer)) > 0 || (n < 0 && errno == EINTR);) {
    if (n > 0) sText.append(buffer, static_cast<std::size_t>(n));
  }
  return sText;
}

}  // namespace

int Daemonize(const std::function<int(const Started&)>& oWork) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) RaiseSystemError("pipe");
  const pid_t lProcess = fork();
  if (lProcess < 0) RaiseSystemError("fork");
  if (lProcess == 0) return Work(oWork, ends[1]);

  close(ends[1]);
  const std::string sReport = ReadAll(ends[0]);
  close(ends[0]);
  if (sReport == std::string{kStarted}) return 0;
  throw std::runtime_error(sReport.empty() ? "it ended during its start" : sReport);
}

}  // namespace ZELWbr3::Instances
