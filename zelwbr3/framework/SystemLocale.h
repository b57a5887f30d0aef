#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/UserLocale.h"

#include <locale>

namespace ZELWbr3 {

/// The locale named by the environment (LC_ALL, LC_NUMERIC, LC_TIME, LANG). Does
/// not change the locale of the process. A category that is not installed is
/// that of the C locale: a point, no groups, month/day/year.
class ZELWBR3_EXPORT SystemLocale : public UserLocale {
 public:
  SystemLocale();
  explicit SystemLocale(const std::locale& oLocale) : m_oLocale(oLocale) {}

  /// There is only the user's locale here.
  Long UserDefaultLCID() const override { return 0; }
  std::string LocaleInfo(Long lLCID, Long lItem) const override;
  std::string ShortDate(const Date& dDate) const override { return Format(dDate, 'x'); }
  std::string LongTime(const Date& dDate) const override { return Format(dDate, 'X'); }

 private:
  std::string Format(const Date& dDate, char cConversion) const;

  std::locale m_oLocale;
};

}  // namespace ZELWbr3
