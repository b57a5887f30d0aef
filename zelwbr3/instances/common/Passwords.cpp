#include "zelwbr3/instances/common/Passwords.h"

#include <algorithm>
#include <functional>

namespace ZELWbr3::Instances {

std::vector<TextRange> PasswordsIn(std::string_view sAddress) {
  std::vector<TextRange> ranges;
  if (const auto iScheme = sAddress.find("://"); iScheme != std::string_view::npos) {
    // Up to the last "@" before the path: a password that was not escaped may
    // contain one itself.
    const auto iUser = iScheme + 3;
    const auto iPath = std::min(sAddress.find_first_of("/?", iUser), sAddress.size());
    const auto iHost = sAddress.substr(0, iPath).rfind('@');
    const auto iColon = sAddress.find(':', iUser);
    if (iHost != std::string_view::npos && iHost > iUser && iColon < iHost) ranges.push_back({iColon + 1, iHost});
  }
  const std::string_view sKeyword = "password";
  for (std::size_t i = 0; (i = sAddress.find(sKeyword, i)) != std::string_view::npos; i += sKeyword.size()) {
    auto iValue = sAddress.find_first_not_of(' ', i + sKeyword.size());
    if (iValue == std::string_view::npos || sAddress[iValue] != '=') continue;
    iValue = std::min(sAddress.find_first_not_of(' ', iValue + 1), sAddress.size());
    const bool bQuoted = iValue < sAddress.size() && sAddress[iValue] == '\'';
    auto iEnd = iValue;
    for (iEnd += bQuoted ? 1 : 0; iEnd < sAddress.size(); ++iEnd) {
      if (sAddress[iEnd] == '\\') {
        ++iEnd;
      } else if (bQuoted ? sAddress[iEnd] == '\'' : (sAddress[iEnd] == ' ' || sAddress[iEnd] == '&')) {
        break;
      }
    }
    ranges.push_back({iValue, std::min(bQuoted ? iEnd + 1 : iEnd, sAddress.size())});
  }
  return ranges;
}

std::string WithoutPasswords(std::string_view sAddress) {
  std::string sShown(sAddress);
  auto ranges = PasswordsIn(sAddress);
  std::ranges::sort(ranges, std::ranges::greater(), &TextRange::Begin);
  for (const auto& [iBegin, iEnd] : ranges) sShown.replace(iBegin, iEnd - iBegin, HiddenPassword);
  return sShown;
}

}  // namespace ZELWbr3::Instances
