#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/common/Descriptor.h"

#include <chrono>
#include <functional>

namespace ZELWbr3::Postgres {

/// How everything waits that waits for a server: until a deadline, until another
/// thread asks it to end, and, when it takes long, on another thread, so that the
/// program that asks stays alive.
class Waiter {
 public:
  using Clock = std::chrono::steady_clock;
  enum class End { Ready, TimeIsUp, Interrupted };

  Waiter();

  void Runner(ZELLib3::Database::Runner oRunner) { m_oRunner = std::move(oRunner); }
  /// Ends the wait that is going on, and those that follow in its task or
  /// operation. From any thread.
  void Interrupt();

  /// Begins a task, which may take this long in all and which no earlier interrupt
  /// ends. Within a task it does nothing.
  class Task {
   public:
    Task(Waiter& oWaiter, std::chrono::milliseconds dAllowed);
    ~Task();
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;

   private:
    Waiter& m_oWaiter;
    bool m_bOutermost;
  };
  Clock::time_point Deadline() const { return m_dDeadline; }

  /// Runs several tasks, and waits between them, which an interrupt ends together.
  void Operate(const std::function<void()>& oOperation);
  /// Runs what must not end halfway, as putting back what has been changed. An
  /// interrupt that comes meanwhile ends what follows.
  void Shelter(const std::function<void()>& oWork);

  /// Runs work that may wait; oWork may call it again.
  void Run(const std::function<void()>& oWork);
  /// Waits until a descriptor is ready; lEvents is poll's POLLIN or POLLOUT, or
  /// both. lDescriptor -1 = only for the time, or an interrupt.
  End Await(int lDescriptor, short lEvents, Clock::time_point dUntil);

 private:
  void ForgetInterrupt();

  ZELLib3::Database::Runner m_oRunner;
  Instances::Descriptor m_oInterrupt;  ///< readable while interrupted
  Clock::time_point m_dDeadline;
  bool m_bInTask = false;
  bool m_bInOperation = false;
  bool m_bSheltered = false;
  bool m_bRunning = false;
};

}  // namespace ZELWbr3::Postgres
