#include "zelwbr3/instances/postgres/PostgresSessions.h"

#include "zelwbr3/base/Calendar.h"

#include <algorithm>

namespace ZELWbr3::Postgres {

namespace {

constexpr char kAsked[] = "reading the sessions";

/// Both texts with cBetween, or the one that is there.
std::string Joined(const std::string& sFirst, const std::string& sBetween, const std::string& sSecond) {
  if (sFirst.empty() || sSecond.empty()) return sFirst + sSecond;
  return sFirst + sBetween + sSecond;
}

/// What the session does, and since when: a text such as "active 3 s".
std::string StateText(const Result& o, int i) {
  const std::string sState = o.Text(i, "state");
  if (!o.IsNull(i, "blocked_by") && !o.Text(i, "blocked_by").empty()) {
    return "waits " + std::to_string(o.Number(i, "in_state")) + " s for " + o.Text(i, "wait_event_type") + " " +
           o.Text(i, "wait_event") + ", blocked by " + o.Text(i, "blocked_by");
  }
  if (sState.empty()) return {};
  const bool bInTransaction = sState.starts_with("idle in transaction");
  const std::int64_t lSeconds = o.Number(i, bInTransaction ? "in_transaction" : "in_state");
  return sState + " " + std::to_string(std::max<std::int64_t>(0, lSeconds)) + " s";
}

/// The statement, or the last one, and for how long the transaction has been open.
std::string DetailText(const Result& o, int i) {
  const std::int64_t lSeconds = o.IsNull(i, "in_transaction") ? 0 : o.Number(i, "in_transaction");
  return Joined(lSeconds > 0 ? "in a transaction for " + std::to_string(lSeconds) + " s" : "", ": ",
                o.Text(i, "query"));
}

Instances::ListedSession::Entry EntryOf(const Result& o, int i) {
  const std::string sSince =
      o.IsNull(i, "since") ? std::string() : Calendar::ISOText(Calendar::LocalTime(o.Number(i, "since")), ' ');
  const std::string sState = o.Text(i, "state");
  return {{o.Text(i, "log_session"), o.Text(i, "pid"), Joined(o.Text(i, "application_name"), ", ", o.Text(i, "client")),
           Joined(o.Text(i, "usename"), "@", o.Text(i, "datname")), sSince, StateText(o, i)},
          sState.empty() ? std::nullopt : std::optional(sState != "idle" && sState != "disabled"),
          DetailText(o, i)};
}

}  // namespace

std::vector<Instances::ListedSession::Entry> PostgresSessions::Read() const {
  std::vector<Instances::ListedSession::Entry> sessions;
  if (!m_oServer->Connected()) return sessions;
  const Result o = *m_oServer->Ask("sessions", kAsked);
  for (int i = 0; i < o.Rows(); ++i) sessions.push_back(EntryOf(o, i));
  return sessions;
}

bool PostgresSessions::Refresh() {
  Forget();
  if (!m_oServer->Refresh()) return false;
  return m_oServer->Attempt([this](Connection&) { List(); });
}

}  // namespace ZELWbr3::Postgres
