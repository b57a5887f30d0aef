#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Date.h"
#include "zelwbr3/base/Export.h"

#include <string>

namespace ZELWbr3 {

/// The user's settings for numbers and dates. Texts are UTF-8.
class ZELWBR3_EXPORT UserLocale {
 public:
  /// Items that can be requested; the numbers are the traditional ones.
  enum Item : int {
    DecimalSeparator = 14,    ///< any text, may have several bytes
    ThousandsSeparator = 15,  ///< may be empty: nothing is grouped
    Grouping = 16,            ///< group sizes from the right, such as "3;0" or "3;2;0"; 0 repeats the last; "" for none
    DecimalPlaces = 17,       ///< number of fractional digits, as decimal text
  };

  virtual ~UserLocale() = default;

  /// Identifies the user's locale.
  virtual Long UserDefaultLCID() const = 0;
  /// The text of an item, possibly followed by NULs; empty for an unknown item.
  virtual std::string LocaleInfo(Long lLCID, Long lItem) const = 0;

  virtual std::string ShortDate(const Date& dDate) const = 0;
  virtual std::string LongTime(const Date& dDate) const = 0;
};

}  // namespace ZELWbr3
