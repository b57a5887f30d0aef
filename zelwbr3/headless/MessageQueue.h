#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/MessagePump.h"

#include <deque>
#include <functional>
#include <mutex>

namespace ZELWbr3::Headless {

/// The message loop of a program without a screen: notifications stay in a queue
/// until they are pumped. A wait on an empty queue would never end, so it raises
/// WaitError.
class ZELWBR3_EXPORT MessageQueue : public MessagePump {
 public:
  /// May be called on any thread; a wait does not wait for it.
  void Post(std::function<void()> oMessage);

  void Turn() override;
  void Poll() override;

 private:
  /// The message that came first; empty when there is none.
  std::function<void()> Take();

  std::mutex m_oMutex;
  std::deque<std::function<void()>> m_messages;
};

}  // namespace ZELWbr3::Headless
