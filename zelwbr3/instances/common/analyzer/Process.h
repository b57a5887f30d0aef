#pragma once

#include "zelwbr3/instances/common/Descriptor.h"

#include <chrono>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// Runs a program to its end, with no input and its standard output thrown
/// away. Raises std::runtime_error with what it wrote to standard error when it
/// did not exit with 0, and when it has not ended in time; it is killed then.
/// arguments[0] is the program's path.
void RunProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds dTimeout);

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
