#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

struct sqlite3;

namespace ZELWbr3::SQLite {

/// Ends the statements of a connection when their time or their memory is used
/// up, or when they are interrupted from another thread. They then fail with the
/// library's code for an interruption or for a missing authorization.
///
/// The library asks it while a statement runs, and through the authorizer while
/// one is prepared: preparing views of views can take longer than running them,
/// and before version 3.41 nothing else can end it.
class Watchdog {
 public:
  using Clock = std::chrono::steady_clock;

  /// The flag outlives this object.
  explicit Watchdog(const std::atomic<bool>& bInterrupted) : m_bInterrupted(bInterrupted) {}
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  /// Call once; this object outlives the handle.
  void Watch(sqlite3* pHandle);
  /// What is read from now on may take this long in all.
  void Allow(std::chrono::milliseconds dTime);
  /// Nothing more will be read before Allow is called.
  bool IsUp() const;

  /// Allows a part of the remaining time as long as this object lives.
  class TimeSlice {
   public:
    TimeSlice(Watchdog& oWatchdog, std::chrono::milliseconds dTime);
    ~TimeSlice() { m_oWatchdog.m_dDeadline = m_dBefore; }
    TimeSlice(const TimeSlice&) = delete;
    TimeSlice& operator=(const TimeSlice&) = delete;

   private:
    Watchdog& m_oWatchdog;
    Clock::time_point m_dBefore;
  };

 private:
  const std::atomic<bool>& m_bInterrupted;
  Clock::time_point m_dDeadline;
  std::int64_t m_lMostMemory = 0;  ///< bytes that the library may have allocated in this process
};

}  // namespace ZELWbr3::SQLite
