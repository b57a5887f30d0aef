#pragma once

#include <functional>
#include <stdexcept>

namespace ZELWbr3 {

/// A wait that can never be fulfilled: the program is closing, the control was
/// destroyed, the browser's process died, or nothing is left that could end it.
/// The control is usable again afterwards unless it was destroyed.
class WaitError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The program's message loop, as far as somebody who waits needs it.
class MessagePump {
 public:
  virtual ~MessagePump() = default;

  /// Blocks until at least one message has arrived and handles it. May be
  /// called again from within a message's handling.
  /// Throws WaitError when the wait cannot end: the program is closing, or no
  /// message can arrive any more.
  virtual void Turn() = 0;

  /// Handles what has arrived already, and returns at once when that is
  /// nothing. For long work that wants the window to stay responsive. Throws
  /// WaitError when the program is closing, which is to end the work.
  virtual void Poll() = 0;

  /// Runs work that may take seconds and returns when it is done; what it throws
  /// is thrown on. Where there are windows, it runs on a thread of its own:
  /// they are repainted meanwhile and take neither clicks nor keys. Work that
  /// comes up while other work goes on waits for its end.
  virtual void RunInBackground(const std::function<void()>& oWork) { oWork(); }
  /// Returns when no work is going on, for whoever must not meet it.
  virtual void AwaitBackground() {}
};

}  // namespace ZELWbr3
