#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/MessagePump.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>

namespace ZELWbr3::Web {

/// The message loop of a session's thread: what the browser sends, and what the
/// program has put off. Turn, Poll and RunInBackground are for that thread.
class ZELWBR3_EXPORT WebPump : public MessagePump {
 public:
  /// What waits at most before the sender has to wait, too.
  static constexpr std::size_t MostMessages = 256;
  static constexpr std::size_t MostBytes = std::size_t{2} << 20;
  /// Messages that may be handled within the handling of others. Boxes and pages
  /// wait for the browser in a few; one that answers none of them, but goes on
  /// asking, would use up the stack.
  static constexpr int MostNested = 100;

  /// oRoom is called when there is room again after Arrive has answered false.
  explicit WebPump(std::function<void()> oRoom) : m_oRoom(std::move(oRoom)) {}

  /// Takes the browser's messages from now on; they wait until somebody does.
  /// bDuringWork tells that one came while the program was at work that nobody
  /// may disturb.
  void Handler(std::function<void(std::string, bool bDuringWork)> oHandle) { m_oHandle = std::move(oHandle); }

  void Turn() override;
  void Poll() override;
  /// On this thread: the server's own goes on meanwhile, and tells work that can be
  /// ended of an Escape that comes.
  void RunInBackground(const std::function<void()>& oWork, const std::function<void()>& oInterrupt = {}) override;

  /// Runs something on this thread, behind what waits. From any thread.
  void Post(std::function<void()> oTask);

  /// Ends every wait, present and later, with ClosingError. bFault: because of what
  /// the browser has sent. From any thread.
  void End(const std::string& sReason, bool bFault = false);
  bool EndedByFault() const;

  // From the server's thread.

  /// A message of the browser. False if no more can be taken for now.
  bool Arrive(std::string sMessage);
  /// Asks work that can be ended to end. Call it again until it has.
  void Interrupt();

 private:
  struct Message {
    std::function<void()> Task;
    std::string Text;
    bool DuringWork = false;
  };

  bool IsFull() const { return m_messages.size() >= MostMessages || m_iBytes >= MostBytes; }
  /// Handles the first message; the lock is held before and after.
  void HandleFirst(std::unique_lock<std::mutex>& oLock);
  // The lock is held.

  /// Throws ClosingError when the session has ended.
  void Check() const;
  void EndLocked(const std::string& sReason, bool bFault);

  std::function<void(std::string, bool)> m_oHandle;
  std::function<void()> m_oRoom;

  mutable std::mutex m_oMutex;
  std::condition_variable m_oArrived;
  std::deque<Message> m_messages;
  std::size_t m_iBytes = 0;
  bool m_bRefused = false;
  int m_iNested = 0;
  bool m_bEnd = false;
  bool m_bFault = false;
  std::string m_sEnd;
  /// Of the work that goes on; null for none, empty if it cannot be ended.
  const std::function<void()>* m_oInterrupt = nullptr;
  std::chrono::steady_clock::time_point m_oBegan;
  bool m_bEscaped = false;
};

}  // namespace ZELWbr3::Web
