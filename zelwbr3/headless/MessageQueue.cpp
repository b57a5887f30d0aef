#include "zelwbr3/headless/MessageQueue.h"

namespace ZELWbr3::Headless {

void MessageQueue::Turn() {
  if (m_messages.empty()) throw WaitError("The wait cannot end: no notification is pending");
  const auto oMessage = std::move(m_messages.front());
  m_messages.pop_front();
  oMessage();
}

void MessageQueue::Poll() {
  while (!m_messages.empty()) Turn();
}

}  // namespace ZELWbr3::Headless
