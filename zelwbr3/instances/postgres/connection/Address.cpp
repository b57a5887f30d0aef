#include "zelwbr3/instances/postgres/connection/Address.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/Passwords.h"
#include "zelwbr3/instances/postgres/connection/ServerError.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

namespace ZELWbr3::Postgres {

namespace {

void ReplaceAll(std::string& sText, const std::string& sOld, const std::string& sNew) {
  if (sOld.empty()) return;
  for (std::size_t i = 0; (i = sText.find(sOld, i)) != std::string::npos; i += sNew.size()) {
    sText.replace(i, sOld.size(), sNew);
  }
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

Address::Address(std::string_view sText) : m_sShown(Text::OneLine(Instances::WithoutPasswords(sText))) {
  char* pMessage = nullptr;
  const std::string sInfo(sText);
  const std::unique_ptr<PQconninfoOption, void (*)(PQconninfoOption*)> oOptions(
      PQconninfoParse(sInfo.c_str(), &pMessage), PQconninfoFree);
  const std::unique_ptr<char, void (*)(void*)> oMessage(pMessage, PQfreemem);
  if (oOptions == nullptr) {
    std::string sMessage = oMessage == nullptr ? "out of memory" : oMessage.get();
    for (const auto& [iBegin, iEnd] : Instances::PasswordsIn(sText)) {
      ReplaceAll(sMessage, sInfo.substr(iBegin, iEnd - iBegin), Instances::HiddenPassword);
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
  ReplaceAll(sMessage, m_sPassword, Instances::HiddenPassword);
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
