#pragma once

#include "zelwbr3/base/Date.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

/// Dates: which ones exist, the current one, and the formats that do not depend
/// on the user's locale.
namespace ZELWbr3::Calendar {

/// The day exists, in years 1 to 9999, and so does the time of day.
bool Exists(const Date& dDate);

/// A moment in the computer's local time.
Date LocalTime(std::time_t tTime);
Date Now();
/// The date as the C library takes it; whether it is summer time, and the day of the
/// week, are left to that.
std::tm Fields(const Date& dDate);
/// LocalTime the other way round. Where clocks were set back, one of the two moments.
std::time_t TimeOf(const Date& dLocal);

/// "2026-01-31T23:59:59"; cBetween is the character between day and time.
std::string ISOText(const Date& dDate, char cBetween = 'T');
/// No value unless the text has exactly this form and the date exists.
std::optional<Date> ParseISO(std::string_view sText, char cBetween = 'T');

/// "20260131".
std::string CompactDay(const Date& dDate);
/// The day at midnight. No value unless the text has exactly this form and the
/// day exists.
std::optional<Date> ParseCompactDay(std::string_view sText);

}  // namespace ZELWbr3::Calendar
