#pragma once

#include <functional>
#include <stdexcept>

namespace ZELWbr3 {

/// A wait that cannot end: the program is closing, the control was destroyed, the
/// browser's process died, or nothing is left that could end it. The control is
/// usable again afterwards unless it was destroyed.
class WaitError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The wait has ended because the user closes the program's window. That is no
/// failure and needs no message.
class ClosingError : public WaitError {
 public:
  using WaitError::WaitError;
};

/// What waiting code needs of the program's message loop.
class MessagePump {
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
