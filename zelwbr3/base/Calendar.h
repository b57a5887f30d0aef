#pragma once

#include "zelwbr3/base/Date.h"
#include "zelwbr3/base/Export.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

/// Dates: which ones exist, the current one, and the formats that do not depend
/// on the user's locale.
namespace ZELWbr3::Calendar {

/// The day exists, in years 1 to 9999, and so does the time of day.
ZELWBR3_EXPORT bool Exists(const Date& dDate);

/// A moment in the computer's local time.
ZELWBR3_EXPORT Date LocalTime(std::time_t tTime);
ZELWBR3_EXPORT Date Now();
/// The date as the C library takes it; whether it is summer time, and the day of the
/// week, are left to that.
ZELWBR3_EXPORT std::tm Fields(const Date& dDate);
/// LocalTime the other way round. Where clocks were set back, one of the two moments.
ZELWBR3_EXPORT std::time_t TimeOf(const Date& dLocal);

/// "2026-01-31T23:59:59"; cBetween is the character between day and time.
ZELWBR3_EXPORT std::string ISOText(const Date& dDate, char cBetween = 'T');
/// No value unless the text has exactly this form and the date exists.
ZELWBR3_EXPORT std::optional<Date> ParseISO(std::string_view sText, char cBetween = 'T');

/// "20260131".
ZELWBR3_EXPORT std::string CompactDay(const Date& dDate);
/// The day at midnight. No value unless the text has exactly this form and the
/// day exists.
ZELWBR3_EXPORT std::optional<Date> ParseCompactDay(std::string_view sText);

}  // namespace ZELWbr3::Calendar
