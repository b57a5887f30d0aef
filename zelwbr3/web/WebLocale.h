#pragma once

#include "zelwbr3/platform/UserLocale.h"

#include <string>
#include <vector>

namespace ZELWbr3::Web {

/// The settings for numbers and dates that a browser has told. Times are the
/// server's.
class WebLocale : public UserLocale {
 public:
  /// What the shell sends, in its order: decimal separator, thousands separator,
  /// group sizes, pattern of a day, pattern of a time, texts for morning and
  /// afternoon. Patterns have d, dd, M, MM, yy, yyyy, H, HH, h, hh, mm, ss and tt
  /// for the last two; other characters stand for themselves. A setting that is
  /// missing, or longer than one can be, is that of the ISO form with a point.
  explicit WebLocale(std::vector<std::string> settings = {});

  Long UserDefaultLCID() const override { return 0; }
  std::string LocaleInfo(Long lLCID, Long lItem) const override;
  std::string ShortDate(const Date& dDate) const override { return Format(dDate, m_sDay); }
  std::string LongTime(const Date& dDate) const override { return Format(dDate, m_sTime); }

 private:
  std::string Format(const Date& dDate, const std::string& sPattern) const;

  std::string m_sDecimal = ".";
  std::string m_sThousands = ",";
  std::string m_sGroups = "3;0";
  std::string m_sDay = "yyyy-MM-dd";
  std::string m_sTime = "HH:mm:ss";
  std::string m_sMorning = "AM";
  std::string m_sAfternoon = "PM";
};

}  // namespace ZELWbr3::Web
