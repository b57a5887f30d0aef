#include "zelwbr3/framework/modCurrency.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/modLocal.h"

#include <charconv>
#include <cmath>

namespace ZELWbr3::modCurrency {

namespace {

/// The largest currency value, 2^63 - 1 ten-thousandths.
constexpr double Limit = 922337203685477.5807;
/// From this value on, a double has at most four decimals anyway.
constexpr double Coarse = 1e12;

/// A complete text as a number in the user's notation; NaN if it is not one.
double Parse(const std::string& sText, const UserLocale& oLocale) {
  const auto Item = [&](UserLocale::Item eItem) {
    return modLocal::LocaleString(oLocale, oLocale.UserDefaultLCID(), static_cast<int>(eItem));
  };
  const std::string sDecimal = Item(UserLocale::DecimalSeparator);
  const std::string sThousands = Item(UserLocale::ThousandsSeparator);
  const std::string sTrimmed = Text::Trim(sText);
  std::string sNumber;
  for (std::string_view sRest = sTrimmed; !sRest.empty();) {
    if (!sDecimal.empty() && sRest.starts_with(sDecimal)) {
      sNumber += '.';
      sRest.remove_prefix(sDecimal.size());
    } else if (!sThousands.empty() && sRest.starts_with(sThousands)) {
      sRest.remove_prefix(sThousands.size());
    } else if (std::string_view("0123456789+-eE").find(sRest.front()) != std::string_view::npos) {
      sNumber += sRest.front();
      sRest.remove_prefix(1);
    } else {
      return NAN;
    }
  }
  if (sNumber.starts_with('+') && !sNumber.starts_with("+-")) sNumber.erase(0, 1);
  double dValue = 0;
  const auto [pEnd, eError] = std::from_chars(sNumber.data(), sNumber.data() + sNumber.size(), dValue);
  return eError == std::errc() && pEnd == sNumber.data() + sNumber.size() ? dValue : NAN;
}

double ToDouble(const clsSize::Variant& vValue, const UserLocale& oLocale) {
  if (const auto* bValue = std::get_if<bool>(&vValue)) return *bValue ? -1 : 0;  // True is -1
  if (const auto* lValue = std::get_if<Long>(&vValue)) return *lValue;
  if (const auto* dValue = std::get_if<double>(&vValue)) return *dValue;
  if (const auto* sValue = std::get_if<std::string>(&vValue)) return Parse(*sValue, oLocale);
  return NAN;
}

}  // namespace

double ToCurrency(const clsSize::Variant& vValue, const UserLocale& oLocale) {
  const double dValue = ToDouble(vValue, oLocale);
  if (!(std::abs(dValue) <= Limit)) return 0;
  if (std::abs(dValue) >= Coarse) return dValue;
  return std::nearbyint(dValue * 10000.0) / 10000.0;
}

}  // namespace ZELWbr3::modCurrency
