#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/UserLocale.h"

#include <array>
#include <string>
#include <variant>

namespace ZELWbr3 {

/// A size with its unit: converts it to other units and formats it.
///
/// Only conversions between bytes and pages use PageBytes. All others that
/// involve pages use the page size in whole KB, so with a page size that is not
/// a multiple of 1024 the result depends on the units it goes through.
class ZELWBR3_EXPORT clsSize {
 public:
  /// Unit numbers, also used as indexes.
  static constexpr int Bytes = 0, KB = 1, MB = 2, GB = 3, Pages = 4, Automatic = 5;
  /// Rounding to whole pages.
  static constexpr int None = 0, Nearest = 1, Up = 2;
  /// A value of any type from outside.
  using Variant = std::variant<std::monostate, bool, Long, double, std::string>;

  explicit clsSize(const UserLocale& oLocale) : m_oLocale(&oLocale) {}

  /// Fractional digits that ValueStr shows for a unit, 0 to 5. Other units, and
  /// digits outside 0 to 255, raise std::out_of_range.
  Long NumDigitsAfterDecimals(Long lUnit) const;
  void NumDigitsAfterDecimals(Long lUnit, Long lDigits);

  /// Page size in bytes; initially 8192.
  Long PageBytes() const { return m_lPageBytes; }
  void PageBytes(Long lPageBytes);

  /// The size in a unit; 0 for units above Pages, std::out_of_range for units
  /// below 0.
  double Value(Long lUnit) const;
  /// Stores a size with its unit, Bytes to Pages; std::out_of_range otherwise.
  void Value(Long lUnit, double dValue);
  /// Stores the value as a currency amount (four decimals), or 0 if it does not
  /// convert.
  void ValueVar(Long lUnit, const Variant& vValue);

  /// The formatted size. Automatic chooses the largest unit of Bytes to GB in
  /// which the size is at least 1.
  std::string ValueStr(Long lUnit, bool bWithUnit) const;

  /// None, Nearest or Up.
  Long RoundToPages() const { return m_lRoundToPages; }
  void RoundToPages(Long lRounding) { m_lRoundToPages = lRounding; }

  /// Stores a size and formats it.
  std::string NumberStr(double dValue, Long lUnit, Long lShownUnit, bool bWithUnit);

 private:
  double RoundedValue() const;

  const UserLocale* m_oLocale;
  double m_dValue = 0;
  Long m_lUnit = Bytes;
  Long m_lPageBytes = 8192;
  Long m_lPageKB = 8;
  Long m_lRoundToPages = None;
  std::array<Long, 6> m_digits = {0, 0, 2, 2, 0, 0};
};

}  // namespace ZELWbr3
