#include "zelwbr3/instances/postgres/connection/Address.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/postgres/connection/ServerError.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

namespace ZELWbr3::Postgres {

namespace {

constexpr char kHidden[] = "***";

void ReplaceAll(std::string& sText, const std::string& sOld, const std::string& sNew) {
  if (sOld.empty()) return;
  for (std::size_t i = 0; (i = sText.find(sOld, i)) != std::string::npos; i += sNew.size()) {
    sText.replace(i, sOld.size(), sNew);
  }
}

struct Range {
  std::size_t Begin;
  std::size_t End;
};

/// Where passwords stand in an address, whether libpq understands it or not.
std::vector<Range> Passwords(std::string_view sText) {
  std::vector<Range> ranges;
  if (const auto iScheme = sText.find("://"); iScheme != std::string_view::npos) {
    // Up to the last "@" before the path: a password that was not escaped may
    // contain one itself.
    const auto iUser = iScheme + 3;
    const auto iPath = std::min(sText.find_first_of("/?", iUser), sText.size());
    const auto iHost = sText.substr(0, iPath).rfind('@');
    const auto iColon = sText.find(':', iUser);
    if (iHost != std::string_view::npos && iHost > iUser && iColon < iHost) ranges.push_back({iColon + 1, iHost});
  }
  const std::string_view sKeyword = "password";
  for (std::size_t i = 0; (i = sText.find(sKeyword, i)) != std::string_view::npos; i += sKeyword.size()) {
    auto iValue = sText.find_first_not_of(' ', i + sKeyword.size());
    if (iValue == std::string_view::npos || sText[iValue] != '=') continue;
    iValue = std::min(sText.find_first_not_of(' ', iValue + 1), sText.size());
    const bool bQuoted = iValue < sText.size() && sText[iValue] == '\'';
    auto iEnd = iValue;
    for (iEnd += bQuoted ? 1 : 0; iEnd < sText.size(); ++iEnd) {
      if (sText[iEnd] == '\\') {
        ++iEnd;
      } else if (bQuoted ? sText[iEnd] == '\'' : (sText[iEnd] == ' ' || sText[iEnd] == '&')) {
        break;
      }
    }
    ranges.push_back({iValue, std::min(bQuoted ? iEnd + 1 : iEnd, sText.size())});
  }
  return ranges;
}

std::string WithoutPasswords(std::string_view sText) {
  std::string sShown(sText);
  auto ranges = Passwords(sText);
  std::ranges::sort(ranges, std::ranges::greater(), &Range::Begin);
  for (const auto& [iBegin, iEnd] : ranges) sShown.replace(iBegin, iEnd - iBegin, kHidden);
  return Text::OneLine(sShown);
}

std::vector<std::string> Parts(const std::string& sList) {
  std::vector<std::string> parts;
  for (std::size_t i = 0; i <= sList.size();) {
    const auto iEnd = std::min(sList.find(',', i), sList.size());
    parts.push_back(sList.substr(i, iEnd - i));
    i = iEnd + 1;
  }
  return parts;
}

}  // namespace

Address::Address(std::string_view sText) : m_sShown(WithoutPasswords(sText)) {
  char* pMessage = nullptr;
  const std::string sInfo(sText);
  const std::unique_ptr<PQconninfoOption, void (*)(PQconninfoOption*)> oOptions(
      PQconninfoParse(sInfo.c_str(), &pMessage), PQconninfoFree);
  const std::unique_ptr<char, void (*)(void*)> oMessage(pMessage, PQfreemem);
  if (oOptions == nullptr) {
    std::string sMessage = oMessage == nullptr ? "out of memory" : oMessage.get();
    for (const auto& [iBegin, iEnd] : Passwords(sText)) {
      ReplaceAll(sMessage, sInfo.substr(iBegin, iEnd - iBegin), kHidden);
    }
    throw ServerError({}, m_sShown, "reading the address", Text::Trim(sMessage, " \n"));
  }
  for (const PQconninfoOption* p = oOptions.get(); p->keyword != nullptr; ++p) {
    if (p->val != nullptr) m_oGiven[p->keyword] = p->val;
  }
  if (const auto it = m_oGiven.find("password"); it != m_oGiven.end()) {
    m_sPassword = it->second;
    m_oGiven.erase(it);
  }
}

std::string Address::Value(const std::string& sKeyword) const {
  if (const auto it = m_oGiven.find(sKeyword); it != m_oGiven.end()) return it->second;
  const std::unique_ptr<PQconninfoOption, void (*)(PQconninfoOption*)> oDefaults(PQconndefaults(), PQconninfoFree);
  for (const PQconninfoOption* p = oDefaults.get(); p != nullptr && p->keyword != nullptr; ++p) {
    if (p->keyword == sKeyword) return p->val == nullptr ? std::string() : p->val;
  }
  return {};
}

std::string Address::Hide(std::string sMessage) const {
  ReplaceAll(sMessage, m_sPassword, kHidden);
  return sMessage;
}

std::vector<Address::Settings> Address::EachHost() const {
  const auto hosts = Parts(Value("host"));
  const auto addresses = Parts(Value("hostaddr"));
  const auto ports = Parts(Value("port"));
  const auto iCount = std::max(hosts.size(), addresses.size());
  // A list that libpq would refuse is left to it.
  const auto Fits = [iCount](const auto& list) { return list.size() == 1 || list.size() == iCount; };
  if (iCount < 2 || !Fits(hosts) || !Fits(addresses) || !Fits(ports)) return {m_oGiven};
  std::vector<Settings> each(iCount, m_oGiven);
  for (std::size_t i = 0; i < iCount; ++i) {
    const auto Set = [&](const char* sKeyword, const std::vector<std::string>& list) {
      if (list.size() > 1) {
        each[i][sKeyword] = list[i];
      } else if (!list.front().empty()) {
        each[i][sKeyword] = list.front();
      }
    };
    Set("host", hosts);
    Set("hostaddr", addresses);
    Set("port", ports);
  }
  return each;
}

}  // namespace ZELWbr3::Postgres
