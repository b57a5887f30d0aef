#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include "zelwbr3/base/Calendar.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace ZELWbr3::Instances {

namespace {

constexpr std::size_t kDateAndTime = std::string_view("2026-03-02T07:00:00").size();

}  // namespace

std::string TimeStamp(std::time_t tTime) {
  std::tm oTime{};
  localtime_r(&tTime, &oTime);
  std::array<char, 40> text{};
  std::string sStamp(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S%z", &oTime));
  return sStamp.insert(sStamp.size() - 2, ":");  // the library's offset is +0100
}

std::string ReadableTime(std::string_view sTimeStamp) {
  if (sTimeStamp.size() < kDateAndTime || sTimeStamp[10] != 'T') return {};
  std::string sText(sTimeStamp.substr(0, kDateAndTime));
  sText[10] = ' ';
  return sText;
}

std::optional<std::int64_t> MomentOf(std::string_view sTimeStamp) {
  const auto oLocal = Calendar::ParseISO(sTimeStamp.substr(0, kDateAndTime));
  // "+01:00"
  const std::string_view sOffset = sTimeStamp.substr(std::min(kDateAndTime, sTimeStamp.size()));
  if (!oLocal || sOffset.size() != 6 || sOffset[3] != ':') return std::nullopt;
  const auto Digits = [&](std::size_t i) { return (sOffset[i] - '0') * 10 + (sOffset[i + 1] - '0'); };
  const int iMinutes = (Digits(1) * 60 + Digits(4)) * (sOffset[0] == '-' ? -1 : 1);
  const std::tm oFields = Calendar::Fields(*oLocal);
  const std::chrono::sys_days oDay = std::chrono::year(oFields.tm_year + 1900) /
                                     std::chrono::month(static_cast<unsigned>(oFields.tm_mon + 1)) /
                                     std::chrono::day(static_cast<unsigned>(oFields.tm_mday));
  const std::int64_t lDays = oDay.time_since_epoch().count();
  const std::int64_t lSeconds = oFields.tm_hour * 3600 + oFields.tm_min * 60 + oFields.tm_sec;
  return (lDays * 86400 + lSeconds - iMinutes * std::int64_t{60}) * 1000;
}

std::string DayOf(std::string_view sTimeStamp) {
  std::string sDay(sTimeStamp.substr(0, 10));
  std::erase(sDay, '-');
  return sDay;
}

}  // namespace ZELWbr3::Instances
