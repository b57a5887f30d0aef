#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/WaitError.h"

#include <functional>

namespace ZELWbr3 {

/// What waiting code needs of the program's message loop.
class ZELWBR3_EXPORT MessagePump {
 public:
  virtual ~MessagePump() = default;

  /// Blocks until at least one message has arrived and handles it. May be called
  /// again while a message is handled. Throws WaitError if the wait cannot end:
  /// because the program is closing (ClosingError) or no message can arrive any
  /// more.
  virtual void Turn() = 0;

  /// Handles messages that have already arrived, without waiting. Keeps the
  /// window responsive during long work. Throws ClosingError if the program is
  /// closing; the work should then end.
  virtual void Poll() = 0;

  /// Runs work that may take seconds and returns when it is done; rethrows what
  /// it throws. With windows, it runs on another thread: if it takes longer than
  /// an eye notices, they are repainted while it runs but take neither clicks nor
  /// keys. If other work is running, waits for that first.
  ///
  /// Work that can be ended has oInterrupt, which asks it, while it runs, to end
  /// soon. It is called, again and again until the work has ended, when the wait
  /// has to end (which then throws WaitError), and when the user presses Escape.
  /// What the user does meanwhile is not lost but comes after such work, unless
  /// Escape was pressed.
  virtual void RunInBackground(const std::function<void()>& oWork, const std::function<void()>& oInterrupt = {}) {
    static_cast<void>(oInterrupt);
    oWork();
  }
  /// Returns when no work is running. For callers that must not run beside it.
  virtual void AwaitBackground() {}
};

}  // namespace ZELWbr3
