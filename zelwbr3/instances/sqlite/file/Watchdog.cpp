#include "zelwbr3/instances/sqlite/file/Watchdog.h"

#include <sqlite3.h>

#include <algorithm>

namespace ZELWbr3::SQLite {

namespace {

/// Steps of the library's virtual machine between two looks. Each may allocate
/// as much as the longest value.
constexpr int kStepsBetweenLooks = 100;
/// What one reading may allocate: far more than a page needs, and far less than
/// the memory of any machine.
constexpr std::int64_t kMostMemory = std::int64_t{256} << 20;

}  // namespace

void Watchdog::Watch(sqlite3* pHandle) {
  const auto OnProgress = [](void* p) -> int { return static_cast<Watchdog*>(p)->IsUp(); };
  sqlite3_progress_handler(pHandle, kStepsBetweenLooks, OnProgress, this);
  // A function that is denied looks like an error in the statement; what it is
  // called in is denied just as well.
  const auto OnPrepare = [](void* p, int iAction, const char*, const char*, const char*, const char*) -> int {
    return iAction != SQLITE_FUNCTION && static_cast<Watchdog*>(p)->IsUp() ? SQLITE_DENY : SQLITE_OK;
  };
  sqlite3_set_authorizer(pHandle, OnPrepare, this);
}

void Watchdog::Allow(std::chrono::milliseconds dTime) {
  m_dDeadline = Clock::now() + dTime;
  m_lMostMemory = sqlite3_memory_used() + kMostMemory;
}

bool Watchdog::IsUp() const {
  return m_bInterrupted || Clock::now() >= m_dDeadline || sqlite3_memory_used() > m_lMostMemory;
}

Watchdog::TimeSlice::TimeSlice(Watchdog& oWatchdog, std::chrono::milliseconds dTime)
    : m_oWatchdog(oWatchdog), m_dBefore(oWatchdog.m_dDeadline) {
  oWatchdog.m_dDeadline = std::min(m_dBefore, Clock::now() + dTime);
}

}  // namespace ZELWbr3::SQLite
