#include "zelwbr3/instances/postgres/PostgresSessions.h"

#include "zelwbr3/base/Calendar.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

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

PostgresSession::Texts TextsOf(const Result& o, int i) {
  const std::string sSince =
      o.IsNull(i, "since") ? std::string() : Calendar::ISOText(Calendar::LocalTime(o.Number(i, "since")), ' ');
  return {o.Text(i, "log_session"),
          o.Text(i, "pid"),
          Joined(o.Text(i, "application_name"), ", ", o.Text(i, "client")),
          Joined(o.Text(i, "usename"), "@", o.Text(i, "datname")),
          sSince,
          StateText(o, i)};
}

}  // namespace

const std::vector<PostgresSession::Texts>& PostgresSessions::Texts() const {
  if (!m_oTexts) {
    std::vector<PostgresSession::Texts> texts;
    if (m_oServer->Connected()) {
      const Result o = *m_oServer->Ask("sessions", kAsked);
      const int iCount = std::min<int>(o.Rows(), std::numeric_limits<std::int16_t>::max());
      for (int i = 0; i < iCount; ++i) texts.push_back(TextsOf(o, i));
    }
    m_oTexts = std::move(texts);
  }
  return *m_oTexts;
}

std::shared_ptr<ZELLib3::Session> PostgresSessions::Item(ZELLib3::Integer iIndex) const {
  if (iIndex < 1 || iIndex > Count()) throw std::out_of_range("There is no such session");
  return std::make_shared<PostgresSession>(iIndex, Texts()[static_cast<std::size_t>(iIndex - 1)]);
}

bool PostgresSessions::Refresh() {
  m_oTexts.reset();
  if (!m_oServer->Refresh()) return false;
  return m_oServer->Attempt([this](Connection&) { Texts(); });
}

}  // namespace ZELWbr3::Postgres
