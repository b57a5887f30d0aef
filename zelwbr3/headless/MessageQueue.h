#pragma once

#include "zelwbr3/platform/MessagePump.h"

#include <deque>
#include <functional>

namespace ZELWbr3::Headless {

/// The message loop of a program without a screen: notifications wait in a
/// queue until somebody pumps them. Somebody who waits while the queue is empty
/// would wait for ever and gets a WaitError instead.
class MessageQueue : public MessagePump {
 public:
  void Post(std::function<void()> oMessage) { m_messages.push_back(std::move(oMessage)); }

  void Turn() override;
  void Poll() override;

 private:
  std::deque<std::function<void()>> m_messages;
};

}  // namespace ZELWbr3::Headless
