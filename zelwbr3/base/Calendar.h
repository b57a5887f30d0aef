#pragma once

#include "zelwbr3/base/Date.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

/// Dates: which exist, when it is now, and how they are written where no
/// user's locale decides.
namespace ZELWbr3::Calendar {

/// There is such a day, from year 1 to 9999, and such a time of day.
bool Exists(const Date& dDate);

/// A moment in the computer's local time.
Date LocalTime(std::time_t tTime);
Date Now();

/// "2026-01-31T23:59:59", with another character between day and time on demand.
std::string ISOText(const Date& dDate, char cBetween = 'T');
/// No value unless the text has just this form and the date exists.
std::optional<Date> ParseISO(std::string_view sText, char cBetween = 'T');

/// "20260131".
std::string CompactDay(const Date& dDate);
/// The day at midnight. No value unless the text has just this form and the day
/// exists.
std::optional<Date> ParseCompactDay(std::string_view sText);

}  // namespace ZELWbr3::Calendar
