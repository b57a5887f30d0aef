#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace ZELWbr3::Instances {

/// A moment as the analyzer writes it: ISO 8601, local time with its offset,
/// "2026-03-02T07:00:00+01:00".
std::string TimeStamp(std::time_t tTime);

/// The same for people: "2026-03-02 07:00:00". Empty for what is no time stamp.
std::string ReadableTime(std::string_view sTimeStamp);

/// Milliseconds since 1970; no value for what is no time stamp.
std::optional<std::int64_t> MomentOf(std::string_view sTimeStamp);

/// The day of a time stamp, "20260302"; its first eight digits.
std::string DayOf(std::string_view sTimeStamp);

}  // namespace ZELWbr3::Instances
