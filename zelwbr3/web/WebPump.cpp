#include "zelwbr3/web/WebPump.h"

#include "zelwbr3/base/Finally.h"

#include <exception>
#include <utility>

namespace ZELWbr3::Web {

namespace {

/// Work that has just begun leaves Escape to whatever comes after it: most work ends
/// before anybody has seen that it goes on.
constexpr std::chrono::milliseconds Patience{25};

/// The agent's message of that key.
bool IsEscape(const std::string& sMessage) {
  return sMessage.find("\n[\"key\",") != std::string::npos && sMessage.ends_with(",27]");
}

}  // namespace

void WebPump::Check() const {
  if (m_bEnd) throw ClosingError(m_sEnd);
}

void WebPump::HandleFirst(std::unique_lock<std::mutex>& oLock) {
  if (m_iNested == MostNested) {
    EndLocked("Its shell asks for ever more while it is waited for", true);
    Check();
  }
  Message oMessage = std::move(m_messages.front());
  m_messages.pop_front();
  m_iBytes -= oMessage.Text.size();
  const bool bRoom = !IsFull() && std::exchange(m_bRefused, false);
  ++m_iNested;
  oLock.unlock();
  Finally(
      [&] {
        if (bRoom) m_oRoom();
        if (oMessage.Task) {
          oMessage.Task();
        } else {
          m_oHandle(std::move(oMessage.Text), oMessage.DuringWork);
        }
      },
      [&] {
        oLock.lock();
        --m_iNested;
      });
}

void WebPump::Turn() {
  std::unique_lock oLock(m_oMutex);
  m_oArrived.wait(oLock, [this] { return m_bEnd || !m_messages.empty(); });
  Check();
  HandleFirst(oLock);
  Check();
}

void WebPump::Poll() {
  std::unique_lock oLock(m_oMutex);
  Check();
  // Bounded, so that one who sends without end cannot hold up the work.
  for (int i = 0; i < 100 && !m_messages.empty(); ++i) {
    HandleFirst(oLock);
    Check();
  }
}

void WebPump::RunInBackground(const std::function<void()>& oWork, const std::function<void()>& oInterrupt) {
  const auto Now = [this](const std::function<void()>* o) {
    const std::scoped_lock oLock(m_oMutex);
    m_oInterrupt = o;
    m_oBegan = std::chrono::steady_clock::now();
    m_bEscaped = false;
    Check();
  };
  Now(&oInterrupt);
  std::exception_ptr oFailure;
  try {
    oWork();
  } catch (...) {
    oFailure = std::current_exception();
  }
  // Who ends the session is not told about the work that failed because of it.
  Now(nullptr);
  if (oFailure != nullptr) std::rethrow_exception(oFailure);
}

void WebPump::Post(std::function<void()> oTask) {
  const std::scoped_lock oLock(m_oMutex);
  m_messages.push_back({std::move(oTask), {}});
  m_oArrived.notify_one();
}

bool WebPump::Arrive(std::string sMessage) {
  const std::scoped_lock oLock(m_oMutex);
  m_iBytes += sMessage.size();
  const bool bCanEnd = m_oInterrupt != nullptr && *m_oInterrupt;
  const bool bEnds =
      bCanEnd && IsEscape(sMessage) && (m_bEscaped || std::chrono::steady_clock::now() - m_oBegan > Patience);
  if (bEnds) {
    // What was done before was meant for what is not waited for any more.
    for (Message& o : m_messages) o.DuringWork = true;
    m_bEscaped = true;
    (*m_oInterrupt)();
  }
  const bool bDuringWork = bEnds || (m_oInterrupt != nullptr && !bCanEnd);
  m_messages.push_back({{}, std::move(sMessage), bDuringWork});
  m_oArrived.notify_one();
  m_bRefused = IsFull();
  return !m_bRefused;
}

void WebPump::EndLocked(const std::string& sReason, bool bFault) {
  if (std::exchange(m_bEnd, true)) return;
  m_sEnd = sReason;
  m_bFault = bFault;
  m_oArrived.notify_one();
}

void WebPump::End(const std::string& sReason, bool bFault) {
  {
    const std::scoped_lock oLock(m_oMutex);
    EndLocked(sReason, bFault);
  }
  Interrupt();
}

bool WebPump::EndedByFault() const {
  const std::scoped_lock oLock(m_oMutex);
  return m_bFault;
}

void WebPump::Interrupt() {
  const std::scoped_lock oLock(m_oMutex);
  if (m_oInterrupt != nullptr && *m_oInterrupt) (*m_oInterrupt)();
}

}  // namespace ZELWbr3::Web
