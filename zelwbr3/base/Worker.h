#pragma once

#include "zelwbr3/base/Export.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace ZELWbr3 {

/// A thread that does one piece of work after the other for one other thread,
/// which calls all members. It is made for the first piece and kept: handing it
/// another costs some ten microseconds.
class ZELWBR3_EXPORT Worker {
 public:
  Worker() = default;
  /// Waits for the work.
  ~Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// Begins work; none is going on. oEnded is called on the worker's thread when
  /// it has ended, and must not call the worker.
  void Begin(std::function<void()> oWork, std::function<void()> oEnded = {});
  bool AtWork() const;
  /// Waits for the end of the work, but no longer than this. True when it has
  /// ended.
  bool Wait(std::chrono::milliseconds dLongest) const;
  /// What the work threw that ended last; null if it threw nothing.
  std::exception_ptr Failure() const;

 private:
  void Run(const std::stop_token& oStop);

  mutable std::mutex m_oMutex;
  mutable std::condition_variable_any m_oChanged;
  std::function<void()> m_oWork;  ///< null while there is none
  std::function<void()> m_oEnded;
  std::exception_ptr m_oFailure;
  std::jthread m_oThread;  ///< last, so that it ends first
};

}  // namespace ZELWbr3
