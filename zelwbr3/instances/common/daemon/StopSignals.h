#pragma once

#include <chrono>

namespace ZELWbr3::Instances {

/// The signals that ask a background process to end, taken when it is ready to
/// end instead of in the middle of its work. Signals that would end it by
/// accident (the end of its terminal, a pipe without a reader, a file-size limit,
/// which a write then reports) are ignored. For the whole process, until it ends.
class StopSignals {
 public:
  StopSignals();
  /// Waits without using the processor. True as soon as the process is asked to
  /// stop, also when it has been already; false at the given time.
  bool ArriveBefore(std::chrono::steady_clock::time_point dUntil) const;
};

}  // namespace ZELWbr3::Instances
