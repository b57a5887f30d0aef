#pragma once

#include <compare>

namespace ZELWbr3 {

/// A point in local time, to the second. The default value, all zero, is "no
/// date".
struct Date {
  int Year = 0;    ///< 1 to 9999
  int Month = 0;   ///< 1 to 12
  int Day = 0;     ///< 1 to 31
  int Hour = 0;    ///< 0 to 23
  int Minute = 0;  ///< 0 to 59
  int Second = 0;  ///< 0 to 59

  auto operator<=>(const Date&) const = default;
};

}  // namespace ZELWbr3
