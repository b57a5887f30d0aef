#pragma once

#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/platform/UserLocale.h"

#include <string>

namespace ZELWbr3::Testing {

/// A user's settings as a test wants them; English unless changed.
struct TestLocale : UserLocale {
  std::string Decimal = ".";
  std::string Thousands = ",";
  std::string Groups = "3;0";
  std::string Places = "2";

  Long UserDefaultLCID() const override { return 1033; }
  std::string LocaleInfo(Long lLCID, Long lItem) const override {
    if (lLCID != UserDefaultLCID()) return {};
    switch (lItem) {
      case DecimalSeparator:
        return Decimal;
      case ThousandsSeparator:
        return Thousands;
      case Grouping:
        return Groups;
      case DecimalPlaces:
        return Places;
      default:
        return {};
    }
  }
  std::string ShortDate(const Date& d) const override { return Joined(d.Year, d.Month, d.Day, '-'); }
  std::string LongTime(const Date& d) const override { return Joined(d.Hour, d.Minute, d.Second, ':'); }

 private:
  static std::string Joined(int a, int b, int c, char cSeparator) {
    const auto Two = [](int i) { return modFormat::Padded(i, 2); };
    return Two(a) + cSeparator + Two(b) + cSeparator + Two(c);
  }
};

}  // namespace ZELWbr3::Testing
