#include "zelwbr3/framework/modDate.h"

#include "zelwbr3/framework/modFormat.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace ZELWbr3::modDate {

namespace {

std::string Two(int iNumber) { return modFormat::Padded(iNumber, 2); }

bool Within(int iNumber, int iLast) { return iNumber >= 0 && iNumber <= iLast; }

}  // namespace

Date Now() {
  const std::time_t tNow = std::time(nullptr);
  // Everything here happens on the user-interface thread.
  const std::tm& oTime = *std::localtime(&tNow);
  return {oTime.tm_year + 1900, oTime.tm_mon + 1, oTime.tm_mday,
          oTime.tm_hour,        oTime.tm_min,     std::min(oTime.tm_sec, 59)};
}

bool Exists(const Date& dDate) {
  using namespace std::chrono;
  const bool bDay =
      Within(dDate.Month, 12) && Within(dDate.Day, 31) && dDate.Year >= 1 && dDate.Year <= 9999 &&
      year_month_day(year(dDate.Year), month(static_cast<unsigned>(dDate.Month)), day(static_cast<unsigned>(dDate.Day)))
          .ok();
  return bDay && Within(dDate.Hour, 23) && Within(dDate.Minute, 59) && Within(dDate.Second, 59);
}

std::string Compact(const Date& dDate) { return modFormat::Padded(dDate.Year, 4) + Two(dDate.Month) + Two(dDate.Day); }

std::string Complaint(const Date& dDate) {
  if (Exists(dDate)) return {};
  // No user's locale can be trusted with such a date.
  return "There is no " + modFormat::Padded(dDate.Year, 4) + "-" + Two(dDate.Month) + "-" + Two(dDate.Day) + " " +
         Two(dDate.Hour) + ":" + Two(dDate.Minute) + ":" + Two(dDate.Second) + ".";
}

}  // namespace ZELWbr3::modDate
