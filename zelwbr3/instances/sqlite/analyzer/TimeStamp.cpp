#include "zelwbr3/instances/sqlite/analyzer/TimeStamp.h"

#include <array>
#include <chrono>

namespace ZELWbr3::SQLite {

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

std::optional<ZELLib3::Date> ParseDay(std::string_view sDay) {
  if (sDay.size() != 8 || sDay.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  const auto Number = [&](int iFrom, int iCount) { return std::stoi(std::string(sDay.substr(iFrom, iCount))); };
  const ZELLib3::Date dDay{Number(0, 4), Number(4, 2), Number(6, 2)};
  using namespace std::chrono;
  const bool bExists = year_month_day(year(dDay.Year), month(dDay.Month), day(dDay.Day)).ok() && dDay.Year > 0;
  return bExists ? std::optional(dDay) : std::nullopt;
}

}  // namespace ZELWbr3::SQLite
