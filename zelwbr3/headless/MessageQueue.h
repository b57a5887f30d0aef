#pragma once

#include "zelwbr3/platform/MessagePump.h"

#include <deque>
#include <functional>

namespace ZELWbr3::Headless {

/// The message loop of a program without a screen: notifications stay in a queue
/// until they are pumped. A wait on an empty queue would never end, so it raises
/// WaitError.
class MessageQueue : public MessagePump {
 public:
  void Post(std::function<void()> oMessage) { m_messages.push_back(std::move(oMessage)); }

  void Turn() override;
  void Poll() override;

 private:
  std::deque<std::function<void()>> m_messages;
};

}  // namespace ZELWbr3::Headless
