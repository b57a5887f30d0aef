#include "zelwbr3/instances/postgres/connection/Waiter.h"

#include "zelwbr3/base/Finally.h"

#include <sys/eventfd.h>
#include <sys/poll.h>

#include <algorithm>

namespace ZELWbr3::Postgres {

Waiter::Waiter() : m_oInterrupt(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "eventfd") {}

void Waiter::Interrupt() { eventfd_write(m_oInterrupt, 1); }

Waiter::Task::Task(Waiter& oWaiter, std::chrono::milliseconds dAllowed)
    : m_oWaiter(oWaiter), m_bOutermost(!std::exchange(oWaiter.m_bInTask, true)) {
  if (!m_bOutermost) return;
  oWaiter.m_dDeadline = Clock::now() + dAllowed;
  if (!oWaiter.m_bInOperation) oWaiter.ForgetInterrupt();
}

Waiter::Task::~Task() {
  if (m_bOutermost) m_oWaiter.m_bInTask = false;
}

void Waiter::ForgetInterrupt() {
  eventfd_t lEarlier = 0;
  eventfd_read(m_oInterrupt, &lEarlier);
}

void Waiter::Operate(const std::function<void()>& oOperation) {
  ForgetInterrupt();
  m_bInOperation = true;
  Finally(oOperation, [&] { m_bInOperation = false; });
}

void Waiter::Shelter(const std::function<void()>& oWork) {
  const bool bBefore = std::exchange(m_bSheltered, true);
  Finally(oWork, [&] { m_bSheltered = bBefore; });
}

void Waiter::Run(const std::function<void()>& oWork) {
  if (m_bRunning || !m_oRunner) return oWork();
  m_bRunning = true;
  Finally([&] { m_oRunner(oWork); }, [&] { m_bRunning = false; });
}

Waiter::End Waiter::Await(int lDescriptor, short lEvents, Clock::time_point dUntil) {
  using namespace std::chrono;
  for (;;) {
    const auto dLeft = std::clamp(ceil<milliseconds>(dUntil - Clock::now()), 0ms, 60000ms);
    pollfd oPolls[] = {{m_bSheltered ? -1 : static_cast<int>(m_oInterrupt), POLLIN, 0}, {lDescriptor, lEvents, 0}};
    const int iReady = poll(oPolls, 2, static_cast<int>(dLeft.count()));
    if (iReady < 0 && errno != EINTR) Instances::RaiseSystemError("poll");
    if (iReady > 0) return oPolls[0].revents != 0 ? End::Interrupted : End::Ready;
    if (iReady == 0 && Clock::now() >= dUntil) return End::TimeIsUp;
  }
}

}  // namespace ZELWbr3::Postgres
