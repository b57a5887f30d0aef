#include "zelwbr3/framework/modFormat.h"

#include "zelwbr3/framework/modLocal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <vector>

namespace ZELWbr3::modFormat {

namespace {

/// The decimal digits of a number: 0.Digits times ten to the Exponent.
struct Decimal {
  bool Negative = false;
  std::string Digits;
  int Exponent = 0;
};

template <typename Float>
Decimal ToDecimal(Float value) {
  char sText[40];
  const auto oEnd =
      std::to_chars(std::begin(sText), std::end(sText), std::abs(value), std::chars_format::scientific).ptr;
  const std::string_view sScientific(sText, static_cast<std::size_t>(oEnd - sText));
  const auto iE = sScientific.find('e');
  Decimal oDecimal;
  oDecimal.Negative = std::signbit(value);
  for (const char c : sScientific.substr(0, iE)) {
    if (c != '.') oDecimal.Digits += c;
  }
  const bool bMinus = sScientific[iE + 1] == '-';
  for (const char c : sScientific.substr(iE + 2)) oDecimal.Exponent = oDecimal.Exponent * 10 + (c - '0');
  if (bMinus) oDecimal.Exponent = -oDecimal.Exponent;
  ++oDecimal.Exponent;
  return oDecimal;
}

/// Whole digits and decimals of a number, rounded half away from zero.
struct Rounded {
  bool Negative = false;
  std::string Whole;
  std::string Fraction;
};

Rounded Round(const Decimal& oDecimal, int iDecimals) {
  // All digits; the decimal point comes after the first iPoint of them.
  std::string sDigits = oDecimal.Digits;
  int iPoint = oDecimal.Exponent;
  if (iPoint < 1) {
    sDigits.insert(0, static_cast<std::size_t>(1 - iPoint), '0');
    iPoint = 1;
  }
  const auto iKept = static_cast<std::size_t>(iPoint + iDecimals);
  const bool bUp = sDigits.size() > iKept && sDigits[iKept] >= '5';
  sDigits.resize(iKept, '0');
  if (bUp) {
    auto i = iKept;
    while (i > 0 && sDigits[i - 1] == '9') sDigits[--i] = '0';
    if (i > 0) {
      ++sDigits[i - 1];
    } else {
      sDigits.insert(0, 1, '1');
      ++iPoint;
    }
  }
  Rounded oRounded;
  oRounded.Negative = oDecimal.Negative && sDigits.find_first_not_of('0') != std::string::npos;
  oRounded.Whole = sDigits.substr(0, static_cast<std::size_t>(iPoint));
  oRounded.Fraction = sDigits.substr(static_cast<std::size_t>(iPoint));
  return oRounded;
}

std::string Item(const UserLocale& oLocale, UserLocale::Item eItem) {
  return modLocal::LocaleString(oLocale, oLocale.UserDefaultLCID(), static_cast<int>(eItem));
}

/// Group sizes from the right; the last one repeats if bRepeat.
struct Groups {
  std::vector<std::size_t> Sizes;
  bool Repeat = false;
};

/// From a text such as "3;2;0".
Groups UserGroups(const UserLocale& oLocale) {
  Groups oGroups;
  for (const char c : Item(oLocale, UserLocale::Grouping)) {
    if (c == '0') oGroups.Repeat = true;
    if (c >= '1' && c <= '9') oGroups.Sizes.push_back(static_cast<std::size_t>(c - '0'));
  }
  return oGroups;
}

const Groups Threes{{3}, true};

std::string Group(const std::string& sDigits, const Groups& oGroups, const std::string& sSeparator) {
  if (oGroups.Sizes.empty() || sSeparator.empty()) return sDigits;
  std::string sGrouped;
  std::size_t iEnd = sDigits.size();
  for (std::size_t iGroup = 0; iEnd > 0; ++iGroup) {
    const bool bMore = iGroup < oGroups.Sizes.size() || oGroups.Repeat;
    const std::size_t iSize = bMore ? oGroups.Sizes[std::min(iGroup, oGroups.Sizes.size() - 1)] : iEnd;
    const std::size_t iStart = iEnd > iSize ? iEnd - iSize : 0;
    sGrouped.insert(0, sDigits, iStart, iEnd - iStart);
    if (iStart > 0) sGrouped.insert(0, sSeparator);
    iEnd = iStart;
  }
  return sGrouped;
}

std::string Grouped(const std::string& sDigits, const Groups& oGroups, const UserLocale& oLocale) {
  return Group(sDigits, oGroups, Item(oLocale, UserLocale::ThousandsSeparator));
}

template <typename Float>
std::string Format(Float value, int iDecimals, const UserLocale& oLocale, bool bGroup) {
  if (!std::isfinite(value)) return "-";
  const Rounded oRounded = Round(ToDecimal(value), iDecimals);
  std::string sText = oRounded.Negative ? "-" : "";
  sText += bGroup ? Grouped(oRounded.Whole, UserGroups(oLocale), oLocale) : oRounded.Whole;
  if (iDecimals > 0) sText += Item(oLocale, UserLocale::DecimalSeparator) + oRounded.Fraction;
  return sText;
}

/// The digits of a whole number and whether it is negative.
std::pair<std::string, bool> Digits(Long lValue, int iDigits) {
  const std::int64_t lWide = lValue;
  std::string sDigits = std::to_string(lWide < 0 ? -lWide : lWide);
  if (sDigits.size() < static_cast<std::size_t>(iDigits))
    sDigits.insert(0, static_cast<std::size_t>(iDigits) - sDigits.size(), '0');
  return {sDigits, lWide < 0};
}

}  // namespace

std::string Padded(Long lValue, int iDigits) {
  const auto [sDigits, bNegative] = Digits(lValue, iDigits);
  return (bNegative ? "-" : "") + sDigits;
}

std::string PaddedGrouped(Long lValue, const UserLocale& oLocale) {
  const auto [sDigits, bNegative] = Digits(lValue, 8);
  return (bNegative ? "-" : "") + Grouped(sDigits, Threes, oLocale);
}

std::string Grouped(Long lValue, const UserLocale& oLocale) {
  if (lValue == 0) return {};
  const auto [sDigits, bNegative] = Digits(lValue, 1);
  return (bNegative ? "-" : "") + Grouped(sDigits, UserGroups(oLocale), oLocale);
}

std::string Fixed(double dValue, int iDecimals, const UserLocale& oLocale) {
  return Format(dValue, iDecimals, oLocale, false);
}

std::string Fixed(float fValue, int iDecimals, const UserLocale& oLocale) {
  return Format(fValue, iDecimals, oLocale, false);
}

std::string Number(double dValue, int iDecimals, const UserLocale& oLocale) {
  return Format(dValue, iDecimals, oLocale, true);
}

std::string GeneralDate(const Date& dDate, const UserLocale& oLocale) {
  if (dDate == Date()) return {};
  return oLocale.ShortDate(dDate) + " " + oLocale.LongTime(dDate);
}

namespace {

/// For the digits of a number outside the range of a double: true if it is too
/// close to zero, not too large.
bool IsTiny(std::string_view sDigits) {
  const auto iExponent = sDigits.find_first_of("eE");
  if (iExponent != std::string_view::npos) return sDigits.substr(iExponent + 1).starts_with('-');
  sDigits.remove_prefix(std::min(sDigits.find_first_not_of('0'), sDigits.size()));
  return sDigits.starts_with('.');
}

}  // namespace

double Val(std::string_view sText) {
  std::string sNumber;
  for (const char c : sText) {
    if (c != ' ') sNumber += c;
  }
  // from_chars does not accept a plus sign, but accepts "inf" and "nan", which
  // are not numbers here.
  std::string_view sRest = sNumber;
  const bool bNegative = sRest.starts_with('-');
  if (bNegative || sRest.starts_with('+')) sRest.remove_prefix(1);
  if (sRest.empty() || std::string_view("0123456789.").find(sRest.front()) == std::string_view::npos) return 0;
  double dValue = 0;
  const auto oRead = std::from_chars(sRest.data(), sRest.data() + sRest.size(), dValue);
  if (oRead.ec == std::errc::result_out_of_range) {
    dValue = IsTiny(sRest.substr(0, static_cast<std::size_t>(oRead.ptr - sRest.data()))) ? 0 : HUGE_VAL;
  } else if (oRead.ec != std::errc()) {
    return 0;
  }
  return bNegative ? -dValue : dValue;
}

Long ToLong(double dValue) {
  if (!(std::abs(dValue) < 4e9)) throw std::overflow_error("Overflow: the number does not fit into 32 bits");
  const double dFloor = std::floor(dValue);
  const double dRest = dValue - dFloor;
  auto lWhole = static_cast<std::int64_t>(dFloor);
  if (dRest > 0.5 || (dRest == 0.5 && lWhole % 2 != 0)) ++lWhole;
  return lWhole;
}

}  // namespace ZELWbr3::modFormat
