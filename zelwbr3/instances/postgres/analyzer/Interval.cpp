#include "zelwbr3/instances/postgres/analyzer/Interval.h"

#include <array>
#include <charconv>
#include <chrono>

namespace ZELWbr3::Postgres {

Counters Counters::Read(Server& oServer) {
  Counters oCounters;
  oServer.Use([&](Connection& oConnection) {
    oCounters = {Waiter::Clock::now(), std::to_string(oServer.Rights().StartedOn), {}};
    for (const Query* pQuery : Queries::Usable("counters.", oServer.Rights())) {
      const Result o = oConnection.Execute(pQuery->For(oServer.Rights()), "reading counters");
      oCounters.Resets += " " + o.Text(0, "reset");
      for (int i = 0; i < o.Columns(); ++i) {
        const std::string sName = o.Name(i);
        if (sName != "reset" && !o.IsNull(0, i)) oCounters.Values[sName] = o.Real(0, sName.c_str());
      }
    }
  });
  return oCounters;
}

Interval::Interval(const Counters& oBefore, const Counters& oNow)
    : m_dSeconds(std::chrono::duration<double>(oNow.At - oBefore.At).count()) {
  if (m_dSeconds <= 0 || oBefore.Resets != oNow.Resets) return;
  for (const auto& [sName, dValue] : oNow.Values) {
    const auto it = oBefore.Values.find(sName);
    if (it == oBefore.Values.end()) continue;
    if (dValue < it->second) {  // it was reset, or something that counted is gone
      m_counts.clear();
      return;
    }
    m_counts[sName] = dValue - it->second;
  }
}

double Interval::Count(const char* sCounter) const {
  const auto it = m_counts.find(sCounter);
  return it == m_counts.end() ? 0 : it->second;
}

double Interval::Rate(const char* sCounter) const { return m_dSeconds > 0 ? Count(sCounter) / m_dSeconds : 0; }

double Interval::HitPercent() const {
  const double dAll = Count("hit") + Count("read");
  return dAll > 0 ? 100 * Count("hit") / dAll : 100;
}

std::string NumberText(double dValue) {
  std::array<char, 64> text;
  const auto [pEnd, eError] =
      std::to_chars(text.data(), text.data() + text.size(), dValue, std::chars_format::fixed, 3);
  if (eError != std::errc()) return {};
  std::string sText(text.data(), pEnd);
  sText.erase(sText.find_last_not_of('0') + 1);
  if (sText.ends_with('.')) sText.pop_back();
  return sText;
}

}  // namespace ZELWbr3::Postgres
