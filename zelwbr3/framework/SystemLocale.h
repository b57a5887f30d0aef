#pragma once

#include "zelwbr3/platform/UserLocale.h"

#include <locale>

namespace ZELWbr3 {

/// The locale that the environment names (LC_ALL, LC_NUMERIC, LC_TIME, LANG),
/// without touching the process's own. One that is not installed counts as the
/// C locale: a point, no groups, month/day/year.
class SystemLocale : public UserLocale {
 public:
  SystemLocale();
  explicit SystemLocale(const std::locale& oLocale) : m_oLocale(oLocale) {}

  /// There is only the user's one here.
  Long UserDefaultLCID() const override { return 0; }
  std::string LocaleInfo(Long lLCID, Long lItem) const override;
  std::string ShortDate(const Date& dDate) const override { return Format(dDate, 'x'); }
  std::string LongTime(const Date& dDate) const override { return Format(dDate, 'X'); }

 private:
  std::string Format(const Date& dDate, char cConversion) const;

  std::locale m_oLocale;
};

}  // namespace ZELWbr3
