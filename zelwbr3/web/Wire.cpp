#include "zelwbr3/web/Wire.h"

#include <utility>

namespace ZELWbr3::Web {

void Wire::Send(std::string sMessage) {
  auto oMessage = std::make_shared<const std::string>(std::move(sMessage));
  const std::scoped_lock oLock(m_oMutex);
  m_iKeptBytes += oMessage->size();
  m_kept.push_back(oMessage);
  while (m_iKeptBytes > MostKept) {
    m_iKeptBytes -= m_kept.front()->size();
    m_kept.pop_front();
    ++m_iBefore;
  }
  if (m_oSocket != nullptr) m_oSocket->Send(std::move(oMessage));
}

bool Wire::Attach(std::shared_ptr<Socket> oSocket, std::uint64_t iGot) {
  const std::scoped_lock oLock(m_oMutex);
  if (iGot < m_iBefore || iGot > m_iBefore + m_kept.size()) return false;
  Replace(std::move(oSocket));
  for (auto i = iGot - m_iBefore; i < m_kept.size(); ++i) m_oSocket->Send(m_kept[i]);
  return true;
}

void Wire::Restart(std::shared_ptr<Socket> oSocket) {
  const std::scoped_lock oLock(m_oMutex);
  Replace(std::move(oSocket));
  m_kept.clear();
  m_iKeptBytes = 0;
  m_iBefore = 0;
}

void Wire::Replace(std::shared_ptr<Socket> oSocket) {
  if (m_oSocket != nullptr) m_oSocket->Close(1001);
  m_oSocket = std::move(oSocket);
}

void Wire::Detach(const Socket* oSocket) {
  const std::scoped_lock oLock(m_oMutex);
  if (m_oSocket.get() == oSocket) m_oSocket.reset();
}

void Wire::Confirm(std::uint64_t iGot) {
  const std::scoped_lock oLock(m_oMutex);
  for (; m_iBefore < iGot && !m_kept.empty(); ++m_iBefore) {
    m_iKeptBytes -= m_kept.front()->size();
    m_kept.pop_front();
  }
}

void Wire::Close(int iCode) {
  const std::scoped_lock oLock(m_oMutex);
  if (m_oSocket != nullptr) std::exchange(m_oSocket, nullptr)->Close(iCode);
}

bool Wire::IsAttached() const {
  const std::scoped_lock oLock(m_oMutex);
  return m_oSocket != nullptr;
}

bool Wire::IsAttached(const Socket* oSocket) const {
  const std::scoped_lock oLock(m_oMutex);
  return m_oSocket.get() == oSocket;
}

void Wire::Resume() {
  const std::scoped_lock oLock(m_oMutex);
  if (m_oSocket != nullptr) m_oSocket->Resume();
}

}  // namespace ZELWbr3::Web
