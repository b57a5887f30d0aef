#pragma once

#include <chrono>

namespace ZELWbr3::Instances {

/// The signals that ask a background process to end, taken when it is ready to
/// end instead of in the middle of its work. Signals that would end it against
/// its intent (its terminal's end, a pipe that nobody reads, a file-size limit,
/// which a write then reports) do nothing any more. For the whole process and
/// the rest of its life.
class StopSignals {
 public:
  StopSignals();
  /// Waits without using the processor. True as soon as the process is asked to
  /// stop, also when it has been already; false at the given time.
  bool ArriveBefore(std::chrono::steady_clock::time_point dUntil) const;
};

}  // namespace ZELWbr3::Instances
