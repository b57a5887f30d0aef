#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/MessagePump.h"

#include <exception>
#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3::Desktop {

/// The toolkit's message loop, for code that waits.
///
/// Handlers of what arrives are called by C code, which no exception may cross.
/// Deliver keeps an exception and Turn throws it again, so it reaches the code
/// that waits.
class ZELWBR3_EXPORT DesktopPump : public MessagePump {
 public:
  using Trace = std::function<void(const std::exception& oThrown)>;

  explicit DesktopPump(Trace oTrace);
  ~DesktopPump() override;

  void Turn() override;
  void Poll() override;
  /// Work is never left alone: a wait for it that has to end throws WaitError
  /// only when the work is done.
  void RunInBackground(const std::function<void()>& oWork, const std::function<void()>& oInterrupt = {}) override;
  void AwaitBackground() override;

  /// Runs a handler of something that has arrived. What it throws is thrown by
  /// the innermost Turn that is going on, or else traced.
  void Deliver(const std::function<void()>& oHandler);

  /// True while Turn, Poll or RunInBackground is going on, or between two Turns of a wait
  /// that one of them was called from.
  bool Waiting() const;
  /// Runs something from the toolkit's loop when the waits that are going on now
  /// have ended and their code has returned.
  void AfterWaits(std::function<void()> oTask);
  /// Ends all waits that are going on now: each Turn throws this reason. A wait
  /// that begins when the last of them has ended is not one of them.
  void EndWaits(std::exception_ptr oReason);
  /// True from EndWaits until the last of those waits has ended.
  bool Ending() const;

 private:
  struct State;
  class Wait;

  /// Shared with every Turn going on, for the pump may be destroyed in it.
  std::shared_ptr<State> m_oState;
};

}  // namespace ZELWbr3::Desktop
