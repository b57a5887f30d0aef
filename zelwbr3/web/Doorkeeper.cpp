#include "zelwbr3/web/Doorkeeper.h"

#include "zelwbr3/base/ReplaceFile.h"
#include "zelwbr3/web/Secrets.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <string_view>

namespace ZELWbr3::Web {

namespace {

using namespace std::chrono_literals;

constexpr auto IdleAtMost = 12h;
constexpr auto AtMost = 24h * 7;
/// Wrong tokens within a minute, from one address and in all.
constexpr std::ptrdiff_t WrongOfAddress = 10;
constexpr std::size_t WrongInAll = 100;

/// How old the file of visits may be.
constexpr auto KeptFor = 1h;

std::string_view HostOf(std::string_view sOrigin) { return sOrigin.substr(sOrigin.find("://") + 3); }

}  // namespace

std::string QueryValue(const std::string& sTarget, const std::string& sName) {
  std::string_view sRest = sTarget;
  sRest.remove_prefix(std::min(sRest.find('?'), sRest.size()));
  while (!sRest.empty()) {
    sRest.remove_prefix(1);
    const std::string_view sPart = sRest.substr(0, sRest.find('&'));
    if (sPart.starts_with(sName + "=")) return std::string(sPart.substr(sName.size() + 1));
    sRest.remove_prefix(sPart.size());
  }
  return {};
}

Doorkeeper::Doorkeeper(Options oOptions, std::function<Clock::time_point()> oNow)
    : m_oOptions(std::move(oOptions)), m_oNow(std::move(oNow)), m_oKept(m_oNow()) {
  ReadVisits();
}

std::string Doorkeeper::KeyOf(const std::string& sCookie) const { return Digest(m_oOptions.Token + "\n" + sCookie); }

void Doorkeeper::ReadVisits() {
  std::ifstream oFile(m_oOptions.VisitsFile);
  std::string sKey;
  for (std::int64_t iCame = 0, iSeen = 0; oFile >> sKey >> iCame >> iSeen;) {
    m_visits[sKey] = {Clock::time_point(std::chrono::seconds(iCame)), Clock::time_point(std::chrono::seconds(iSeen))};
  }
}

void Doorkeeper::KeepVisits() {
  m_oKept = m_oNow();
  if (m_oOptions.VisitsFile.empty()) return;
  const auto Seconds = [](Clock::time_point o) {
    return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(o.time_since_epoch()).count());
  };
  std::string sAll;
  for (const auto& [sKey, oVisit] : m_visits)
    sAll += sKey + " " + Seconds(oVisit.Came) + " " + Seconds(oVisit.Seen) + "\n";
  try {
    ReplaceFile(m_oOptions.VisitsFile, sAll);
  } catch (const std::exception&) {
    // See above.
  }
}

std::optional<Response> Doorkeeper::Refusal(const Request& o) const {
  const bool bHost = std::ranges::any_of(m_origins, [&](const auto& s) { return HostOf(s) == o.Host; });
  if (!bHost) return Response{421};
  if (!o.Origin.empty() && !IsFromOurPage(o)) return Response{403};
  // A link in a mail or chat may lead to the address with the token, and to nothing else.
  const bool bOther = !o.FetchSite.empty() && o.FetchSite != "same-origin" && o.FetchSite != "none";
  if (bOther && !(o.Method == "GET" && o.Path() == "/" && !QueryValue(o.Target, "token").empty())) return Response{403};
  return std::nullopt;
}

bool Doorkeeper::IsFromOurPage(const Request& o) const {
  return std::ranges::find(m_origins, o.Origin) != m_origins.end();
}

std::string Doorkeeper::CookieOf(const Request& oRequest) {
  const std::string sName = CookieName() + "=";
  std::string_view sRest = oRequest.Cookie;
  while (!sRest.empty()) {
    const auto iEnd = std::min(sRest.find(';'), sRest.size());
    std::string_view sPart = sRest.substr(0, iEnd);
    sRest.remove_prefix(std::min(iEnd + 1, sRest.size()));
    sPart.remove_prefix(std::min(sPart.find_first_not_of(' '), sPart.size()));
    if (!sPart.starts_with(sName)) continue;
    const std::string sValue(sPart.substr(sName.size()));
    if (IsGood(sValue)) return sValue;
  }
  return {};
}

bool Doorkeeper::IsGood(const std::string& sCookie) {
  const auto it = m_visits.find(KeyOf(sCookie));
  if (it == m_visits.end()) return false;
  const auto oNow = m_oNow();
  if (oNow - it->second.Seen > IdleAtMost || oNow - it->second.Came > AtMost) {
    m_visits.erase(it);
    return false;
  }
  it->second.Seen = oNow;
  if (oNow - m_oKept > KeptFor) KeepVisits();
  return true;
}

std::string Doorkeeper::SetCookie(const Request& oRequest, const std::string& sValue, long lSeconds) const {
  const bool bPlain = std::ranges::find(m_origins, "http://" + oRequest.Host) != m_origins.end();
  return CookieName() + "=" + sValue + "; Path=/; HttpOnly; SameSite=Strict; Max-Age=" + std::to_string(lSeconds) +
         (bPlain ? "" : "; Secure");
}

Doorkeeper::Entry Doorkeeper::Enter(const Request& oRequest) {
  if (IsGuessing(oRequest.Address)) return {{}, 429};
  if (!IsSameSecret(QueryValue(oRequest.Target, "token"), m_oOptions.Token)) {
    m_wrong.emplace_back(m_oNow(), oRequest.Address);
    return {{}, 401};
  }
  const auto oNow = m_oNow();
  std::erase_if(m_visits, [&](const auto& o) { return oNow - o.second.Seen > IdleAtMost; });
  const std::string sCookie = MakeSecret();
  m_visits[KeyOf(sCookie)] = {oNow, oNow};
  KeepVisits();
  return {SetCookie(oRequest, sCookie, std::chrono::seconds(AtMost).count())};
}

std::string Doorkeeper::Leave(const Request& oRequest) {
  if (m_visits.erase(KeyOf(CookieOf(oRequest))) > 0) KeepVisits();
  return SetCookie(oRequest, "", 0);
}

Doorkeeper::Entry Doorkeeper::MayReadFigures(const Request& oRequest) {
  if (IsGuessing(oRequest.Address)) return {{}, 429};
  constexpr std::string_view Scheme = "Bearer ";
  const bool bRight =
      oRequest.Authorization.starts_with(Scheme) &&
      IsSameSecret(std::string_view(oRequest.Authorization).substr(Scheme.size()), m_oOptions.MetricsToken);
  if (bRight) return {};
  // One that asks without any token has guessed nothing.
  if (!oRequest.Authorization.empty()) m_wrong.emplace_back(m_oNow(), oRequest.Address);
  return {{}, 401};
}

bool Doorkeeper::IsGuessing(const std::string& sAddress) {
  const auto oSince = m_oNow() - 1min;
  while (!m_wrong.empty() && m_wrong.front().first < oSince) m_wrong.pop_front();
  return m_wrong.size() >= WrongInAll ||
         std::ranges::count(m_wrong, sAddress, [](const auto& o) { return o.second; }) >= WrongOfAddress;
}

}  // namespace ZELWbr3::Web
