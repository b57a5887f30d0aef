#pragma once

#include "zelwbr3/framework/ZELLib3/Error.h"

#include <ctime>
#include <optional>
#include <string>

namespace ZELWbr3::SQLite {

/// Points in time as local dates.
struct LocalTime {
  static ZELLib3::Date Of(std::time_t tTime);
  static ZELLib3::Date Now() { return Of(std::time(nullptr)); }

  /// "2026-01-31 23:59:59".
  static std::string Text(const ZELLib3::Date& dDate);
  /// No value for anything but what Text makes.
  static std::optional<ZELLib3::Date> Parse(const std::string& sText);
};

}  // namespace ZELWbr3::SQLite
