#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/UserLocale.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace ZELWbr3 {

/// A timing trace in a text file. The file is opened and closed for every line,
/// so the trace survives a crash of the host and can be read while it is
/// written. Times are milliseconds since StartLogging; beyond 32 bits (24.8 days)
/// they raise std::overflow_error. A file that cannot be written raises
/// std::runtime_error, which names it.
class ZELWBR3_EXPORT clsTrace {
 public:
  /// Milliseconds of a monotonic clock.
  using Timer = std::function<std::int64_t()>;

  explicit clsTrace(const UserLocale& oLocale, Timer oTimer = SteadyTimer);

  void StartLogging(const std::string& sFileName);
  /// Only after logging has started.
  void Text(const std::string& sText);
  /// Opens a level. More than 1025 levels raise std::out_of_range.
  void Push(const std::string& sText);
  /// Closes the level opened last and writes how long it was open; raises
  /// std::out_of_range if there is none.
  void Pop(const std::string& sText);
  /// Only after logging has started.
  void StopLogging();

 private:
  static std::int64_t SteadyTimer();
  Long Elapsed() const;
  std::string Bracketed(Long lMilliseconds) const;
  void Write(const std::string& sLine);

  const UserLocale& m_oLocale;
  Timer m_oTimer;
  std::string m_sFileName;
  std::int64_t m_lStart = 0;
  bool m_bStarted = false;
  std::size_t m_iDepth = 0;
  std::array<Long, 1025> m_starts;
};

}  // namespace ZELWbr3
