#pragma once

#include "zelwbr3/instances/common/Descriptor.h"

#include <chrono>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// How a program is started.
struct ProgramCall {
  std::vector<std::string> Arguments;    ///< the first is the program's path
  std::vector<std::string> Environment;  ///< "NAME=VALUE": in addition to this process's, or instead of it
};

/// Runs a program to its end, with no input, and answers what it wrote to
/// standard output. Raises std::runtime_error with what it wrote to standard
/// error when it did not exit with 0, and when it has not ended in time; it is
/// killed then. A program has ended when nobody holds its outputs any more.
std::string RunProgram(const ProgramCall& oCall, std::chrono::milliseconds dTimeout);

/// A process that runs at the moment. Its number may become another process's,
/// this does not. Raises std::system_error when there is none.
class RunningProcess {
 public:
  explicit RunningProcess(int lProcess);
  /// SIGTERM. One that has ended already is fine.
  void AskToEnd() const;
  /// False when it has not ended in time.
  bool WaitForEnd(std::chrono::milliseconds dTimeout) const;

 private:
  std::string m_sAbout;
  Descriptor m_oProcess;
};

}  // namespace ZELWbr3::Instances
