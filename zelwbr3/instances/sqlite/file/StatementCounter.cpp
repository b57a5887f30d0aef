#include "zelwbr3/instances/sqlite/file/StatementCounter.h"

#include <sqlite3.h>

namespace ZELWbr3::SQLite {

namespace {

constexpr std::size_t kTextsKept = 500;

std::string FirstWord(std::string_view sSQL) {
  std::string sWord;
  for (const char c : sSQL) {
    const char cUpper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    if (cUpper < 'A' || cUpper > 'Z') break;
    sWord += cUpper;
  }
  return sWord;
}

}  // namespace

StatementCounter::Figures& StatementCounter::Figures::operator+=(const Figures& oOther) {
  for (const auto member :
       {&Figures::Runs, &Figures::Prepares, &Figures::Rows, &Figures::FullScans, &Figures::FullScanSteps,
        &Figures::Sorts, &Figures::AutoIndexRows, &Figures::Steps, &Figures::Nanoseconds}) {
    this->*member += oOther.*member;
  }
  return *this;
}

void StatementCounter::Watch(sqlite3* pHandle) {
  sqlite3_trace_v2(pHandle, SQLITE_TRACE_STMT | SQLITE_TRACE_ROW | SQLITE_TRACE_PROFILE, &StatementCounter::OnTrace,
                   this);
}

std::int64_t StatementCounter::Runs(std::string_view sWord) const {
  const auto it = m_oByWord.find(sWord);
  return it == m_oByWord.end() ? 0 : it->second;
}

int StatementCounter::OnTrace(unsigned lEvent, void* pThis, void* pStatement, void*) {
  auto& oThis = *static_cast<StatementCounter*>(pThis);
  auto* pTraced = static_cast<sqlite3_stmt*>(pStatement);
  switch (lEvent) {
    case SQLITE_TRACE_STMT:
      oThis.m_oRunning.try_emplace(pTraced);
      break;
    case SQLITE_TRACE_ROW:
      ++oThis.m_oRunning[pTraced].Rows;
      break;
    case SQLITE_TRACE_PROFILE:
      oThis.Ended(pTraced);
      break;
  }
  return 0;
}

void StatementCounter::Ended(sqlite3_stmt* pStatement) {
  const Running oEnded = m_oRunning[pStatement];
  m_oRunning.erase(pStatement);
  const auto Since = [&](int lCounter) -> std::int64_t { return sqlite3_stmt_status(pStatement, lCounter, 1); };
  Figures oRun;
  oRun.Runs = 1;
  // The library counts runs from the preparation on, and this counter is left
  // alone; it has a counter of its own for preparing once more.
  oRun.Prepares = (sqlite3_stmt_status(pStatement, SQLITE_STMTSTATUS_RUN, 0) == 1) + Since(SQLITE_STMTSTATUS_REPREPARE);
  oRun.FullScanSteps = Since(SQLITE_STMTSTATUS_FULLSCAN_STEP);
  oRun.FullScans = oRun.FullScanSteps > 0;
  oRun.Sorts = Since(SQLITE_STMTSTATUS_SORT);
  oRun.AutoIndexRows = Since(SQLITE_STMTSTATUS_AUTOINDEX);
  oRun.Steps = Since(SQLITE_STMTSTATUS_VM_STEP);
  oRun.Rows = oEnded.Rows;
  oRun.Nanoseconds = std::chrono::nanoseconds(std::chrono::steady_clock::now() - oEnded.Began).count();
  const char* sSQL = sqlite3_sql(pStatement);
  std::string sText = sSQL ? sSQL : "";
  m_oTotal += oRun;
  ++m_oByWord[FirstWord(sText)];
  if (m_oByText.size() >= kTextsKept && !m_oByText.contains(sText)) sText = "(other statements)";
  m_oByText[sText] += oRun;
}

}  // namespace ZELWbr3::SQLite
