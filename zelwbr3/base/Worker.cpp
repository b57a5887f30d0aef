#include "zelwbr3/base/Worker.h"

#include <utility>

namespace ZELWbr3 {

void Worker::Begin(std::function<void()> oWork, std::function<void()> oEnded) {
  {
    const std::lock_guard oLock(m_oMutex);
    m_oWork = std::move(oWork);
    m_oEnded = std::move(oEnded);
    m_oFailure = nullptr;
  }
  if (!m_oThread.joinable()) m_oThread = std::jthread([this](const std::stop_token& oStop) { Run(oStop); });
  m_oChanged.notify_all();
}

bool Worker::AtWork() const {
  const std::lock_guard oLock(m_oMutex);
  return m_oWork != nullptr;
}

bool Worker::Wait(std::chrono::milliseconds dLongest) const {
  std::unique_lock oLock(m_oMutex);
  return m_oChanged.wait_for(oLock, dLongest, [this] { return m_oWork == nullptr; });
}

std::exception_ptr Worker::Failure() const {
  const std::lock_guard oLock(m_oMutex);
  return m_oFailure;
}

void Worker::Run(const std::stop_token& oStop) {
  std::unique_lock oLock(m_oMutex);
  while (m_oChanged.wait(oLock, oStop, [this] { return m_oWork != nullptr; })) {
    oLock.unlock();
    std::exception_ptr oFailure;
    try {
      m_oWork();
    } catch (...) {
      oFailure = std::current_exception();
    }
    oLock.lock();
    m_oFailure = std::move(oFailure);
    m_oWork = nullptr;
    m_oChanged.notify_all();
    if (m_oEnded) m_oEnded();
  }
}

}  // namespace ZELWbr3
