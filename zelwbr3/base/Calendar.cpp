#include "zelwbr3/base/Calendar.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace ZELWbr3::Calendar {

namespace {

/// The numbers in a text that has the given form: each run of zeros in the form
/// is a number of that many digits, every other character stands for itself.
template <std::size_t Count>
std::optional<std::array<int, Count>> Numbers(std::string_view sText, std::string_view sForm) {
  if (sText.size() != sForm.size()) return std::nullopt;
  std::array<int, Count> numbers{};
  std::size_t iNumber = 0;
  for (std::size_t i = 0; i < sForm.size(); ++i) {
    if (sForm[i] != '0') {
      if (sText[i] != sForm[i]) return std::nullopt;
      ++iNumber;
    } else if (sText[i] < '0' || sText[i] > '9') {
      return std::nullopt;
    } else {
      numbers[iNumber] = 10 * numbers[iNumber] + (sText[i] - '0');
    }
  }
  return numbers;
}

std::optional<Date> IfExists(const Date& dDate) { return Exists(dDate) ? std::optional(dDate) : std::nullopt; }

}  // namespace

bool Exists(const Date& dDate) {
  using namespace std::chrono;
  const auto Within = [](int iNumber, int iFirst, int iLast) { return iNumber >= iFirst && iNumber <= iLast; };
  return Within(dDate.Year, 1, 9999) && Within(dDate.Month, 1, 12) && Within(dDate.Day, 1, 31) &&
         year_month_day(year(dDate.Year), month(static_cast<unsigned>(dDate.Month)),
                        day(static_cast<unsigned>(dDate.Day)))
             .ok() &&
         Within(dDate.Hour, 0, 23) && Within(dDate.Minute, 0, 59) && Within(dDate.Second, 0, 59);
}

Date LocalTime(std::time_t tTime) {
  std::tm oTime{};
  localtime_r(&tTime, &oTime);
  // A leap second counts as second 59.
  return {oTime.tm_year + 1900, oTime.tm_mon + 1, oTime.tm_mday,
          oTime.tm_hour,        oTime.tm_min,     std::min(oTime.tm_sec, 59)};
}

std::tm Fields(const Date& dDate) {
  std::tm oTime{};
  oTime.tm_year = dDate.Year - 1900;
  oTime.tm_mon = dDate.Month - 1;
  oTime.tm_mday = dDate.Day;
  oTime.tm_hour = dDate.Hour;
  oTime.tm_min = dDate.Minute;
  oTime.tm_sec = dDate.Second;
  oTime.tm_isdst = -1;
  return oTime;
}

std::time_t TimeOf(const Date& dLocal) {
  std::tm oTime = Fields(dLocal);
  return std::mktime(&oTime);
}

Date Now() { return LocalTime(std::time(nullptr)); }

std::string ISOText(const Date& dDate, char cBetween) {
  char sText[80];
  std::snprintf(sText, sizeof sText, "%04d-%02d-%02d%c%02d:%02d:%02d", dDate.Year, dDate.Month, dDate.Day, cBetween,
                dDate.Hour, dDate.Minute, dDate.Second);
  return sText;
}

std::optional<Date> ParseISO(std::string_view sText, char cBetween) {
  std::string sForm = "0000-00-00T00:00:00";
  sForm[10] = cBetween;
  const auto numbers = Numbers<6>(sText, sForm);
  if (!numbers) return std::nullopt;
  const auto [iYear, iMonth, iDay, iHour, iMinute, iSecond] = *numbers;
  return IfExists({iYear, iMonth, iDay, iHour, iMinute, iSecond});
}

std::string CompactDay(const Date& dDate) {
  char sText[40];
  std::snprintf(sText, sizeof sText, "%04d%02d%02d", dDate.Year, dDate.Month, dDate.Day);
  return sText;
}

std::optional<Date> ParseCompactDay(std::string_view sText) {
  const auto numbers = Numbers<1>(sText, "00000000");
  if (!numbers) return std::nullopt;
  const int iDay = numbers->front();
  return IfExists({iDay / 10000, iDay / 100 % 100, iDay % 100});
}

}  // namespace ZELWbr3::Calendar
