#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/platform/UserLocale.h"

#include <array>
#include <string>
#include <variant>

namespace ZELWbr3 {

/// One size with its unit: converts it to any other and formats it.
///
/// Only conversions between bytes and pages use PageBytes; all others with
/// pages use the page size in whole KB, so a page size that is not a multiple
/// of 1024 gives different results by path.
class clsSize {
 public:
  /// Unit numbers, used as indexes everywhere.
  static constexpr int Bytes = 0, KB = 1, MB = 2, GB = 3, Pages = 4, Automatic = 5;
  /// Rounding to whole pages.
  static constexpr int None = 0, Nearest = 1, Up = 2;
  /// A value of any kind, as it comes from outside.
  using Variant = std::variant<std::monostate, bool, Long, double, std::string>;

  explicit clsSize(const UserLocale& oLocale) : m_oLocale(&oLocale) {}

  /// Fractional digits that ValueStr shows for a unit, 0 to 5; another unit
  /// raises std::out_of_range, and so do digits that are not 0 to 255.
  Long NumDigitsAfterDecimals(Long lUnit) const;
  void NumDigitsAfterDecimals(Long lUnit, Long lDigits);

  /// Page size in bytes, 8192 at first.
  Long PageBytes() const { return m_lPageBytes; }
  void PageBytes(Long lPageBytes);

  /// The size in a unit; 0 for a unit above Pages, std::out_of_range for one
  /// below 0.
  double Value(Long lUnit) const;
  /// Stores a size with its unit, Bytes to Pages; std::out_of_range otherwise.
  void Value(Long lUnit, double dValue);
  /// Stores what converts to a currency value (four decimals), else 0.
  void ValueVar(Long lUnit, const Variant& vValue);

  /// The formatted size; Automatic chooses the largest of Bytes to GB that is
  /// at least 1.
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
