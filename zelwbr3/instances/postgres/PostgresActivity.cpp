#include "zelwbr3/instances/postgres/PostgresActivity.h"

#include <algorithm>
#include <span>

namespace ZELWbr3::Postgres {

namespace {

constexpr char kAsked[] = "reading the activity";

struct ByWord {
  std::size_t Index;
  const char* Word;
};
constexpr ByWord kByWord[] = {{1, "CREATE"},  {3, "ALTER"},   {5, "DROP"},    {8, "CALL"},
                              {10, "UPDATE"}, {13, "DELETE"}, {16, "SELECT"}, {16, "WITH"},
                              {16, "FETCH"},  {16, "VALUES"}, {16, "TABLE"},  {19, "INSERT"}};
/// Which of them return rows.
constexpr std::size_t kSelects = 16;

/// A counter of the interface, and where it comes from.
struct ByColumn {
  std::size_t Index;
  const char* Column;
};
constexpr ByColumn kSQLOfDatabases[] = {{6, "rollbacks"}, {7, "commits"},   {12, "updated"},
                                        {15, "deleted"},  {17, "returned"}, {20, "inserted"}};
constexpr ByColumn kScans[] = {{21, "table_scans"}, {23, "index_scans"}};
constexpr ByColumn kLocks[] = {{0, "entries"}, {4, "tables"}, {5, "owners"}, {6, "requestors"}};
constexpr ByColumn kLog[] = {{0, "pages"}, {3, "overflows"}};

void Take(std::span<double> oCounters, const std::optional<Result>& o, std::span<const ByColumn> columns) {
  if (!o || o->Rows() == 0) return;
  for (const ByColumn& oBy : columns) {
    if (!o->IsNull(0, oBy.Column)) oCounters[oBy.Index] = o->Real(0, oBy.Column);
  }
}

}  // namespace

bool PostgresActivity::Refresh() {
  Forget();
  if (!m_oServer->RefreshFigures()) return false;
  return m_oServer->Attempt([this](Connection&) { Counters(); });
}

PostgresActivity::Values PostgresActivity::Read() const {
  Values oValues;
  if (m_oServer->ReadFigures()) {
    const auto oDatabases = m_oServer->Ask("activity.databases", kAsked);
    Take(oValues.SQL, oDatabases, kSQLOfDatabases);
    oValues.IO[0] = oDatabases->Real(0, "read");
    oValues.IO[1] = oDatabases->Real(0, "hit") + oDatabases->Real(0, "read");
    constexpr ByColumn Written[] = {{2, "written"}};
    Take(oValues.IO, m_oServer->Ask("activity.writes", kAsked), Written);
    Take(oValues.SQL, m_oServer->Ask("activity.scans", kAsked), kScans);
    constexpr ByColumn Functions[] = {{9, "calls"}};
    Take(oValues.SQL, m_oServer->Ask("activity.functions", kAsked), Functions);
    Take(oValues.Lock, m_oServer->Ask("activity.locks", kAsked), kLocks);
    Take(oValues.Log, m_oServer->Ask("activity.wal", kAsked), kLog);
    ReadStatements(oValues);
  }
  return oValues;
}

void PostgresActivity::ReadStatements(Values& oValues) const {
  const auto o =
      m_oServer->ReadFigures()->CountsStatements ? m_oServer->Ask("activity.statements", kAsked) : std::nullopt;
  if (!o) return;
  double dCalls = 0;
  // Without the right the texts of others are hidden, so nothing is known by word.
  const bool bWords = m_oServer->Rights().ReadsStats;
  if (bWords) {
    oValues.SQL[18] = 0;
    for (const ByWord& oBy : kByWord) oValues.SQL[oBy.Index] = 0;
  }
  for (int i = 0; i < o->Rows(); ++i) {
    dCalls += o->Real(i, "calls");
    const std::string sWord = o->Text(i, "word");
    const auto it = std::ranges::find_if(kByWord, [&](const ByWord& oBy) { return sWord == oBy.Word; });
    if (!bWords || it == std::end(kByWord)) continue;
    oValues.SQL[it->Index] += o->Real(i, "calls");
    if (it->Index == kSelects) oValues.SQL[18] += o->Real(i, "rows");
  }
  oValues.SQL[0] = dCalls;
  oValues.SQL[4] = dCalls;
  constexpr ByColumn Plans[] = {{2, "plans"}};
  Take(oValues.SQL, m_oServer->Ask("activity.plans", kAsked), Plans);
}

}  // namespace ZELWbr3::Postgres
