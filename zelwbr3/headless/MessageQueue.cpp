#include "zelwbr3/headless/MessageQueue.h"

#include <utility>

namespace ZELWbr3::Headless {

void MessageQueue::Post(std::function<void()> oMessage) {
  const std::scoped_lock oLock(m_oMutex);
  m_messages.push_back(std::move(oMessage));
}

std::function<void()> MessageQueue::Take() {
  const std::scoped_lock oLock(m_oMutex);
  if (m_messages.empty()) return {};
  auto oMessage = std::move(m_messages.front());
  m_messages.pop_front();
  return oMessage;
}

void MessageQueue::Turn() {
  const auto oMessage = Take();
  if (!oMessage) throw WaitError("The wait cannot end: no notification is pending");
  oMessage();
}

void MessageQueue::Poll() {
  while (const auto oMessage = Take()) oMessage();
}

}  // namespace ZELWbr3::Headless
