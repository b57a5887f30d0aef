#include "zelwbr3/instances/postgres/operations/Admission.h"

namespace ZELWbr3::Postgres {

namespace {

constexpr char kLimits[] = "changing the connection limits";
constexpr char kSessions[] = "looking at the sessions";

/// A half-dropped database has limit -2 and cannot be changed.
constexpr char kClose[] = R"(
SELECT format('ALTER DATABASE %1$I SET zelwbr3.connection_limit = %2$L; ALTER DATABASE %1$I CONNECTION LIMIT 0',
              d.datname, d.datconnlimit)
FROM pg_database AS d WHERE d.datallowconn AND d.datconnlimit <> -2 AND NOT EXISTS (
  SELECT FROM pg_db_role_setting AS s, unnest(s.setconfig) AS c(x)
  WHERE s.setrole = 0 AND s.setdatabase = d.oid AND c.x LIKE 'zelwbr3.connection\_limit=%')
ORDER BY d.datname)";

constexpr char kReopen[] = R"(
SELECT format('ALTER DATABASE %1$I CONNECTION LIMIT %2$s; ALTER DATABASE %1$I RESET zelwbr3.connection_limit',
              d.datname, split_part(c.x, '=', 2)::int)
FROM pg_database AS d JOIN pg_db_role_setting AS s ON s.setrole = 0 AND s.setdatabase = d.oid, unnest(s.setconfig) AS c(x)
WHERE c.x LIKE 'zelwbr3.connection\_limit=%' ORDER BY d.datname)";

const std::string kOthers =
    " FROM pg_stat_activity AS a LEFT JOIN pg_roles AS r ON r.oid = a.usesysid "
    "WHERE a.backend_type = 'client backend' AND a.pid <> pg_backend_pid()";
const std::string kOrdinary = " AND NOT coalesce(r.rolsuper, false)";

}  // namespace

void Admission::ChangeLimits(const std::string& sCommands) {
  Connection::Change oChange(m_oConnection, kLimits);
  const Result o = m_oConnection.Execute(sCommands, kLimits);
  for (int iRow = 0; iRow < o.Rows(); ++iRow) m_oConnection.ExecuteAll(o.Text(iRow, 0), kLimits);
  oChange.Commit();
}

void Admission::Close() { ChangeLimits(kClose); }

void Admission::Reopen() { ChangeLimits(kReopen); }

void Admission::EndIdleSessions() {
  m_oConnection.Execute("SELECT pg_terminate_backend(a.pid)" + kOthers + kOrdinary + " AND a.state = 'idle'",
                        "ending idle sessions");
}

std::string Admission::Sessions(const std::string& sWhich) {
  const std::string sSessions =
      "SELECT a.pid, format('process %s (%s%s@%s, %s)', a.pid, coalesce(nullif(a.application_name, '') || ', ', ''), "
      "a.usename, a.datname, a.state) AS session, row_number() OVER (ORDER BY a.pid) AS number, count(*) OVER () AS "
      "count" +
      kOthers + sWhich;
  return m_oConnection
      .Execute(
          "SELECT string_agg(session, ', ' ORDER BY pid) || "
          "CASE WHEN max(count) > 5 THEN format(' and %s more', max(count) - 5) ELSE '' END "
          "FROM (" +
              sSessions + ") AS s WHERE number <= 5",
          kSessions)
      .Text(0, 0);
}

std::string Admission::OrdinarySessions() { return Sessions(kOrdinary); }

std::string Admission::OpenTransactions() { return Sessions(" AND a.xact_start IS NOT NULL"); }

}  // namespace ZELWbr3::Postgres
