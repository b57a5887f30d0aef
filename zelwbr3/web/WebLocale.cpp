#include "zelwbr3/web/WebLocale.h"

#include "zelwbr3/base/Text.h"

#include <algorithm>

namespace ZELWbr3::Web {

namespace {

constexpr std::size_t MostOfText = 8;
constexpr std::size_t MostOfPattern = 32;

bool AreGroups(const std::string& s) { return s.find_first_not_of("0123456789;") == std::string::npos; }

std::string Digits(int iNumber, std::size_t iLeast) {
  std::string s = std::to_string(iNumber);
  return s.size() < iLeast ? std::string(iLeast - s.size(), '0') + s : s;
}

}  // namespace

WebLocale::WebLocale(std::vector<std::string> settings) {
  settings.resize(7);
  const auto Take = [](std::string& sInto, const std::string& sSetting, std::size_t iMost, bool bMayBeEmpty = false) {
    if ((bMayBeEmpty || !sSetting.empty()) && sSetting.size() <= iMost) sInto = Text::Clean(sSetting);
  };
  const bool bTold = !settings[0].empty();
  Take(m_sDecimal, settings[0], MostOfText);
  Take(m_sThousands, settings[1], MostOfText, bTold);
  if (AreGroups(settings[2])) Take(m_sGroups, settings[2], MostOfText, bTold);
  Take(m_sDay, settings[3], MostOfPattern);
  Take(m_sTime, settings[4], MostOfPattern);
  Take(m_sMorning, settings[5], MostOfText);
  Take(m_sAfternoon, settings[6], MostOfText);
}

std::string WebLocale::LocaleInfo(Long, Long lItem) const {
  switch (lItem) {
    case DecimalSeparator:
      return m_sDecimal;
    case ThousandsSeparator:
      return m_sGroups.empty() ? std::string() : m_sThousands;
    case Grouping:
      return m_sGroups;
    case DecimalPlaces:
      return "2";
    default:
      return {};
  }
}

std::string WebLocale::Format(const Date& d, const std::string& sPattern) const {
  std::string sText;
  for (std::size_t i = 0; i < sPattern.size();) {
    const char c = sPattern[i];
    const std::size_t iEnd = std::min(sPattern.find_first_not_of(c, i), sPattern.size());
    const std::size_t iCount = iEnd - i;
    i = iEnd;
    switch (c) {
      case 'd':
        sText += Digits(d.Day, iCount);
        break;
      case 'M':
        sText += Digits(d.Month, iCount);
        break;
      case 'y':
        sText += iCount == 2 ? Digits(d.Year % 100, 2) : Digits(d.Year, iCount);
        break;
      case 'H':
        sText += Digits(d.Hour, iCount);
        break;
      case 'h':
        sText += Digits((d.Hour + 11) % 12 + 1, iCount);
        break;
      case 'm':
        sText += Digits(d.Minute, iCount);
        break;
      case 's':
        sText += Digits(d.Second, iCount);
        break;
      case 't':
        sText += d.Hour < 12 ? m_sMorning : m_sAfternoon;
        break;
      default:
        sText += sPattern.substr(iEnd - iCount, iCount);
    }
  }
  return sText;
}

}  // namespace ZELWbr3::Web
