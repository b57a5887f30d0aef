#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/web/HTTP.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Web {

/// Says who may come in: which host names and origins are ours, who has the
/// token, and whose cookie it was exchanged for. Used on one thread.
class ZELWBR3_EXPORT Doorkeeper {
 public:
  using Clock = std::chrono::system_clock;

  struct Options {
    std::string Token;         ///< opens a browser's way in
    std::string MetricsToken;  ///< for programs that ask for figures; opens nothing else
    /// Where those who are inside are remembered, so that they still are after a restart
    /// with the same token; empty = nowhere. It holds no cookie, nor anything to make one of.
    std::string VisitsFile = {};
  };

  explicit Doorkeeper(Options oOptions, std::function<Clock::time_point()> oNow = Clock::now);

  /// Where browsers find the server: "http://127.0.0.1:8080". Nothing is answered
  /// before this is known.
  void ServedAt(std::vector<std::string> origins, std::uint16_t iPort) {
    m_origins = std::move(origins);
    m_iPort = iPort;
  }

  /// 421 for a host name that is not ours, 403 for a request that another site
  /// has made; no value if neither.
  std::optional<Response> Refusal(const Request& oRequest) const;
  /// The request comes from one of our own pages.
  bool IsFromOurPage(const Request& oRequest) const;

  /// The cookie's value if it is one that was given out and is still good; empty
  /// otherwise.
  std::string CookieOf(const Request& oRequest);
  /// A cookie is still good; it has been used now.
  bool IsGood(const std::string& sCookie);
  /// Exchanges the token in a request's query for a cookie: answers the header's
  /// value. No value for a wrong token; 429 as the number of a refusal after too
  /// many of them.
  struct Entry {
    std::string SetCookie;
    int Refused = 0;  ///< an HTTP status, 0 = let in
  };
  Entry Enter(const Request& oRequest);
  /// Forgets a request's cookie; answers the header's value that makes the browser
  /// forget it.
  std::string Leave(const Request& oRequest);
  /// Whether a request brings the token for figures, and nothing else.
  Entry MayReadFigures(const Request& oRequest);

 private:
  struct Visit {
    Clock::time_point Came;
    Clock::time_point Seen;
  };

  std::string CookieName() const { return "zelweb-" + std::to_string(m_iPort); }
  /// Sent over nothing but TLS where browsers find the request's host by nothing else.
  std::string SetCookie(const Request& oRequest, const std::string& sValue, long lSeconds) const;
  /// By what a visit is known here; a cookie cannot be found from it.
  std::string KeyOf(const std::string& sCookie) const;
  void ReadVisits();
  /// A file that cannot be written is left: those inside need the token after a restart.
  void KeepVisits();
  bool IsGuessing(const std::string& sAddress);

  Options m_oOptions;
  std::vector<std::string> m_origins;
  std::uint16_t m_iPort = 0;
  std::function<Clock::time_point()> m_oNow;
  std::map<std::string, Visit> m_visits;  ///< by KeyOf their cookies
  Clock::time_point m_oKept;
  std::deque<std::pair<Clock::time_point, std::string>> m_wrong;
};

/// The value of a parameter in a target's query, not decoded; empty if there is
/// none.
std::string QueryValue(const std::string& sTarget, const std::string& sName);

}  // namespace ZELWbr3::Web
