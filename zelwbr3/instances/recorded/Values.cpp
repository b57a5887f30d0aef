#include "zelwbr3/instances/recorded/Values.h"

#include <chrono>
#include <cstdio>

namespace ZELWbr3::Recorded {

namespace {

bool IsValid(const Date& dDate) {
  namespace chrono = std::chrono;
  const chrono::year_month_day oDay{chrono::year(dDate.Year), chrono::month(static_cast<unsigned>(dDate.Month)),
                                    chrono::day(static_cast<unsigned>(dDate.Day))};
  const auto bWithin = [](int lValue, int lMin, int lMax) { return lValue >= lMin && lValue <= lMax; };
  return bWithin(dDate.Year, 1, 9999) && bWithin(dDate.Month, 1, 12) && bWithin(dDate.Day, 1, 31) && oDay.ok() &&
         bWithin(dDate.Hour, 0, 23) && bWithin(dDate.Minute, 0, 59) && bWithin(dDate.Second, 0, 59);
}

}  // namespace

std::string DateText(const Date& dDate) {
  char sText[80];
  std::snprintf(sText, sizeof sText, "%04d-%02d-%02dT%02d:%02d:%02d", dDate.Year, dDate.Month, dDate.Day, dDate.Hour,
                dDate.Minute, dDate.Second);
  return sText;
}

std::optional<Date> DateFromText(std::string_view sText) {
  constexpr std::string_view sForm = "0000-00-00T00:00:00";
  if (sText.size() != sForm.size()) return std::nullopt;
  int aNumbers[6] = {};
  std::size_t lNumber = 0;
  for (std::size_t lAt = 0; lAt < sForm.size(); ++lAt) {
    if (sForm[lAt] != '0') {
      if (sText[lAt] != sForm[lAt]) return std::nullopt;
      ++lNumber;
    } else if (sText[lAt] < '0' || sText[lAt] > '9') {
      return std::nullopt;
    } else {
      aNumbers[lNumber] = 10 * aNumbers[lNumber] + (sText[lAt] - '0');
    }
  }
  const Date dDate{aNumbers[0], aNumbers[1], aNumbers[2], aNumbers[3], aNumbers[4], aNumbers[5]};
  return IsValid(dDate) ? std::optional(dDate) : std::nullopt;
}

}  // namespace ZELWbr3::Recorded
