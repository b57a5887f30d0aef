#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include <array>

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

std::string DayOf(std::string_view sTimeStamp) {
  std::string sDay(sTimeStamp.substr(0, 10));
  std::erase(sDay, '-');
  return sDay;
}

}  // namespace ZELWbr3::Instances
