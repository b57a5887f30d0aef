#include "zelwbr3/instances/common/daemon/StopSignals.h"

#include <signal.h>

#include <algorithm>

namespace ZELWbr3::Instances {

namespace {

sigset_t Asking() {
  sigset_t oSet;
  sigemptyset(&oSet);
  sigaddset(&oSet, SIGTERM);
  sigaddset(&oSet, SIGINT);
  return oSet;
}

}  // namespace

StopSignals::StopSignals() {
  const sigset_t oAsking = Asking();
  sigprocmask(SIG_BLOCK, &oAsking, nullptr);
  // A blocked signal that its parent had told to be ignored would get lost.
  for (const int lSignal : {SIGTERM, SIGINT}) signal(lSignal, SIG_DFL);
  for (const int lSignal : {SIGHUP, SIGPIPE, SIGXFSZ}) signal(lSignal, SIG_IGN);
}

bool StopSignals::ArriveBefore(std::chrono::steady_clock::time_point dUntil) const {
  using namespace std::chrono;
  const sigset_t oAsking = Asking();
  for (;;) {
    const auto dLeft = std::max(nanoseconds::zero(), nanoseconds(dUntil - steady_clock::now()));
    const auto dSeconds = duration_cast<seconds>(dLeft);
    const timespec oLeft{static_cast<time_t>(dSeconds.count()), static_cast<long>((dLeft - dSeconds).count())};
    if (sigtimedwait(&oAsking, nullptr, &oLeft) > 0) return true;
    if (steady_clock::now() >= dUntil) return false;  // otherwise interrupted, by being stopped and continued
  }
}

}  // namespace ZELWbr3::Instances
