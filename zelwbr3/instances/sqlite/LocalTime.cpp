#include "zelwbr3/instances/sqlite/LocalTime.h"

#include <cstdio>

namespace ZELWbr3::SQLite {

ZELLib3::Date LocalTime::Of(std::time_t tTime) {
  std::tm oTime{};
  localtime_r(&tTime, &oTime);
  return {oTime.tm_year + 1900, oTime.tm_mon + 1, oTime.tm_mday, oTime.tm_hour, oTime.tm_min, oTime.tm_sec};
}

std::string LocalTime::Text(const ZELLib3::Date& dDate) {
  char sText[80];
  std::snprintf(sText, sizeof sText, "%04d-%02d-%02d %02d:%02d:%02d", dDate.Year, dDate.Month, dDate.Day, dDate.Hour,
                dDate.Minute, dDate.Second);
  return sText;
}

std::optional<ZELLib3::Date> LocalTime::Parse(const std::string& sText) {
  ZELLib3::Date dDate;
  std::sscanf(sText.c_str(), "%4d-%2d-%2d %2d:%2d:%2d", &dDate.Year, &dDate.Month, &dDate.Day, &dDate.Hour,
              &dDate.Minute, &dDate.Second);
  return Text(dDate) == sText ? std::optional(dDate) : std::nullopt;
}

}  // namespace ZELWbr3::SQLite
