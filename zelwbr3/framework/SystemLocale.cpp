#include "zelwbr3/framework/SystemLocale.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Text.h"

#include <chrono>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace ZELWbr3 {

namespace {

// Only the wide facets support separators of several bytes.
using Numbers = std::numpunct<wchar_t>;
using Money = std::moneypunct<wchar_t>;
using Times = std::time_put<wchar_t>;

std::string ToUTF8(std::wstring_view sText) {
  std::string sUTF8;
  for (const wchar_t c : sText) Text::AppendCodePoint(sUTF8, static_cast<char32_t>(c));
  return sUTF8;
}

/// "3;2;0" from the C library's list of group sizes.
std::string Groups(const std::string& sSizes) {
  std::string sGroups;
  for (const char c : sSizes) {
    if (c <= 0 || c == CHAR_MAX) return sGroups;  // nothing is grouped beyond this
    sGroups += std::to_string(static_cast<int>(c)) + ";";
  }
  return sGroups.empty() ? sGroups : sGroups + "0";
}

/// The name of a category's locale, as POSIX orders the variables.
std::string LocaleName(const char* sCategory) {
  for (const char* sVariable : {"LC_ALL", sCategory, "LANG"}) {
    const char* sValue = std::getenv(sVariable);
    if (sValue != nullptr && *sValue != '\0') return sValue;
  }
  return "C";
}

}  // namespace

SystemLocale::SystemLocale() : m_oLocale(std::locale::classic()) {
  struct Category {
    std::locale::category Number;
    const char* Variable;
  };
  // One by one, so that a missing category does not affect the others.
  static constexpr Category Categories[] = {
      {std::locale::ctype, "LC_CTYPE"},
      {std::locale::numeric, "LC_NUMERIC"},
      {std::locale::monetary, "LC_MONETARY"},
      {std::locale::time, "LC_TIME"},
  };
  for (const Category& oCategory : Categories) {
    const std::string sName = LocaleName(oCategory.Variable);
    try {
      m_oLocale = std::locale(m_oLocale, sName, oCategory.Number);
    } catch (const std::runtime_error&) {
      // Not installed: this category stays the C locale's.
    }
  }
}

std::string SystemLocale::LocaleInfo(Long, Long lItem) const {
  const auto& oNumbers = std::use_facet<Numbers>(m_oLocale);
  // Without groups, the library still gives a separator.
  std::string sGroups = Groups(oNumbers.grouping());
  switch (lItem) {
    case DecimalSeparator:
      return ToUTF8(std::wstring(1, oNumbers.decimal_point()));
    case ThousandsSeparator:
      return sGroups.empty() ? "" : ToUTF8(std::wstring(1, oNumbers.thousands_sep()));
    case Grouping:
      return sGroups;
    case DecimalPlaces: {
      const int iDigits = std::use_facet<Money>(m_oLocale).frac_digits();
      return std::to_string(iDigits > 0 && iDigits < 10 ? iDigits : 2);
    }
    default:
      return {};
  }
}

std::string SystemLocale::Format(const Date& dDate, char cConversion) const {
  // Summer time stays unknown: some locales append the zone's name, which is not known here.
  std::tm oTime = Calendar::Fields(dDate);
  const std::chrono::year_month_day oDay{std::chrono::year(dDate.Year),
                                         std::chrono::month(static_cast<unsigned>(dDate.Month)),
                                         std::chrono::day(static_cast<unsigned>(dDate.Day))};
  if (oDay.ok()) oTime.tm_wday = static_cast<int>(std::chrono::weekday(std::chrono::sys_days(oDay)).c_encoding());
  std::wostringstream oStream;
  oStream.imbue(m_oLocale);
  std::use_facet<Times>(m_oLocale).put(std::ostreambuf_iterator(oStream), oStream, L' ', &oTime, cConversion);
  return Text::Trim(ToUTF8(oStream.str()));
}

}  // namespace ZELWbr3
