#include "zelwbr3/desktop/DesktopPump.h"

#include "zelwbr3/base/Worker.h"
#include "zelwbr3/desktop/CloseGuard.h"
#include "zelwbr3/desktop/InputGrab.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/timer.h>

#include <chrono>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace ZELWbr3::Desktop {

namespace {

/// Work that ends within this time is simply waited for: most readings do, and
/// nobody notices.
constexpr std::chrono::milliseconds Patience(25);
/// Milliseconds between two interruptions of the same work. One that comes just
/// before a part of the work begins is lost.
constexpr int BetweenInterrupts = 50;

}  // namespace

struct DesktopPump::State {
  Trace oTrace;
  int iDepth = 0;
  Worker oWorker;
  /// Why the waits that are going on end; null while they may go on.
  std::exception_ptr oEnd;
  std::exception_ptr oError;
  std::vector<std::function<void()>> oAfterWaits;

  /// Throws what the waiting one has to know.
  void Check() {
    if (oError != nullptr) std::rethrow_exception(std::exchange(oError, nullptr));
    if (oEnd != nullptr) std::rethrow_exception(oEnd);
  }

  void TraceError(const std::exception_ptr& oThrown) {
    try {
      std::rethrow_exception(oThrown);
    } catch (const std::exception& o) {
      if (oTrace) oTrace(o);
    }
  }
};

/// One wait, from its beginning to its end.
class DesktopPump::Wait {
 public:
  explicit Wait(std::shared_ptr<State> oState) : m_oState(std::move(oState)) { ++m_oState->iDepth; }
  ~Wait() {
    if (--m_oState->iDepth > 0) return;
    m_oState->oEnd = nullptr;
    for (const auto& oTask : std::exchange(m_oState->oAfterWaits, {})) wxTheApp->CallAfter(oTask);
  }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

  /// Blocks until something has arrived and handles it.
  void Dispatch() {
    // A program that shows a page before its main loop runs has no loop yet.
    wxEventLoopBase* oLoop = wxEventLoopBase::GetActive();
    std::unique_ptr<wxEventLoopBase> oOwn;
    std::optional<wxEventLoopActivator> oActivator;
    if (oLoop == nullptr) {
      oOwn = std::make_unique<wxEventLoop>();
      oLoop = oOwn.get();
      oActivator.emplace(oLoop);
    }
    CloseGuard::Watch();
    // The result says nothing: after a modal dialog it is false at every call.
    oLoop->Dispatch();
  }

 private:
  std::shared_ptr<State> m_oState;
};

DesktopPump::DesktopPump(Trace oTrace) : m_oState(std::make_shared<State>()) { m_oState->oTrace = std::move(oTrace); }

DesktopPump::~DesktopPump() {
  m_oState->oTrace = nullptr;
  EndWaits(std::make_exception_ptr(WaitError("The control was destroyed")));
}

void DesktopPump::Turn() {
  const std::shared_ptr<State> oState = m_oState;
  oState->Check();
  Wait oWait(oState);
  oWait.Dispatch();
  oState->Check();
}

void DesktopPump::Poll() {
  const std::shared_ptr<State> oState = m_oState;
  const Wait oWait(oState);
  wxEventLoopBase* oLoop = wxEventLoopBase::GetActive();
  // Bounded, so that an animation cannot hold up the work.
  for (int i = 0; oLoop != nullptr && i < 100 && oLoop->Pending(); ++i) {
    oLoop->Dispatch();
    oState->Check();
  }
  // What the program has put off until it is idle, which it is not for long.
  if (wxTheApp->HasPendingEvents()) wxTheApp->ProcessPendingEvents();
  oState->Check();
}

void DesktopPump::RunInBackground(const std::function<void()>& oWork, const std::function<void()>& oInterrupt) {
  AwaitBackground();
  const std::shared_ptr<State> oState = m_oState;
  oState->Check();
  Wait oWait(oState);
  Worker& oWorker = oState->oWorker;
  oWorker.Begin(oWork, [] { g_main_context_wakeup(nullptr); });
  if (!oWorker.Wait(Patience)) {
    wxTimer oAgain;
    oAgain.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { oInterrupt(); });
    const auto Interrupt = [&] {
      if (oInterrupt == nullptr || oAgain.IsRunning()) return;
      oInterrupt();
      oAgain.Start(BetweenInterrupts);
    };
    const InputGrab oGrab(oInterrupt == nullptr ? std::function<void()>() : Interrupt);
    while (oWorker.AtWork()) {
      if (oState->oEnd != nullptr) Interrupt();
      oWait.Dispatch();
    }
  }
  // Who closes the window is not told about the work that failed because of it.
  const std::exception_ptr oFailure = oWorker.Failure();
  if (oFailure != nullptr && oState->oEnd == nullptr) std::rethrow_exception(oFailure);
  oState->Check();
}

void DesktopPump::AwaitBackground() {
  const std::shared_ptr<State> oState = m_oState;
  while (oState->oWorker.AtWork()) Turn();
}

void DesktopPump::Deliver(const std::function<void()>& oHandler) {
  const std::shared_ptr<State> oState = m_oState;
  try {
    oHandler();
  } catch (...) {
    if (oState->iDepth > 0 && oState->oError == nullptr) {
      oState->oError = std::current_exception();
    } else {
      oState->TraceError(std::current_exception());
    }
  }
}

void DesktopPump::AfterWaits(std::function<void()> oTask) {
  if (Waiting()) {
    m_oState->oAfterWaits.push_back(std::move(oTask));
  } else {
    wxTheApp->CallAfter(oTask);
  }
}

bool DesktopPump::Waiting() const { return m_oState->iDepth > 0; }

void DesktopPump::EndWaits(std::exception_ptr oReason) {
  if (m_oState->iDepth > 0) m_oState->oEnd = std::move(oReason);
}

bool DesktopPump::Ending() const { return m_oState->oEnd != nullptr; }

}  // namespace ZELWbr3::Desktop
