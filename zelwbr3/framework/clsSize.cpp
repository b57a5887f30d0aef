#include "zelwbr3/framework/clsSize.h"

#include "zelwbr3/framework/modCurrency.h"
#include "zelwbr3/framework/modFormat.h"

#include <cmath>
#include <stdexcept>

namespace ZELWbr3 {

namespace {

std::size_t Index(Long lUnit, int iLast) {
  if (lUnit < 0 || lUnit > iLast) {
    throw std::out_of_range("Subscript out of range: there is no unit " + std::to_string(lUnit));
  }
  return static_cast<std::size_t>(lUnit);
}

}  // namespace

Long clsSize::NumDigitsAfterDecimals(Long lUnit) const { return m_digits[Index(lUnit, Automatic)]; }

void clsSize::NumDigitsAfterDecimals(Long lUnit, Long lDigits) {
  if (lDigits < 0 || lDigits > 255) {
    throw std::out_of_range("A number cannot be shown with " + std::to_string(lDigits) + " fractional digits");
  }
  m_digits[Index(lUnit, Automatic)] = lDigits;
}

void clsSize::PageBytes(Long lPageBytes) {
  m_lPageBytes = lPageBytes;
  m_lPageKB = modFormat::ToLong(lPageBytes / 1024.0);
}

void clsSize::Value(Long lUnit, double dValue) {
  Index(lUnit, Pages);
  m_lUnit = lUnit;
  m_dValue = dValue;
}

void clsSize::ValueVar(Long lUnit, const Variant& vValue) { Value(lUnit, modCurrency::ToCurrency(vValue, *m_oLocale)); }

double clsSize::Value(Long lUnit) const {
  if (lUnit > Pages) return 0;
  Index(lUnit, Pages);
  const double dValue = RoundedValue();
  if (m_lUnit == lUnit) return dValue;
  if (lUnit == Pages) {
    if (m_lUnit == Bytes) return dValue / m_lPageBytes;
    return dValue * std::pow(1024.0, m_lUnit - KB) / m_lPageKB;
  }
  if (m_lUnit == Pages) {
    if (lUnit == Bytes) return dValue * m_lPageBytes;
    return dValue * m_lPageKB / std::pow(1024.0, lUnit - KB);
  }
  return dValue * std::pow(1024.0, m_lUnit - lUnit);
}

double clsSize::RoundedValue() const {
  if (m_lRoundToPages == None) return m_dValue;
  const double dPerPage = m_lUnit == Bytes ? double(m_lPageBytes) : double(m_lPageKB);
  const double dSteps = m_lUnit == MB ? 1024.0 : m_lUnit == GB ? 1024.0 * 1024.0 : 1.0;
  const double dPages = m_lUnit == Pages ? m_dValue : m_dValue * dSteps / dPerPage;
  double dRounded = std::nearbyint(dPages);  // half to even, the default rounding mode
  if (m_lRoundToPages == Up && dRounded < dPages) dRounded += 1;
  return m_lUnit == Pages ? dRounded : dRounded * dPerPage / dSteps;
}

std::string clsSize::ValueStr(Long lUnit, bool bWithUnit) const {
  static constexpr std::array<const char*, 5> Suffixes = {" Bytes", " KB", " MB", " GB", " Pages"};
  Index(lUnit, Automatic);
  if (lUnit == Automatic) {
    lUnit = GB;
    while (lUnit > Bytes && Value(lUnit) < 1) lUnit -= 1;
  }
  const std::string sNumber = modFormat::Number(Value(lUnit), NumDigitsAfterDecimals(lUnit), *m_oLocale);
  return bWithUnit ? sNumber + Suffixes[Index(lUnit, Pages)] : sNumber;
}

std::string clsSize::NumberStr(double dValue, Long lUnit, Long lShownUnit, bool bWithUnit) {
  Value(lUnit, dValue);
  return ValueStr(lShownUnit, bWithUnit);
}

}  // namespace ZELWbr3
