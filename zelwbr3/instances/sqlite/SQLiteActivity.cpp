#include "zelwbr3/instances/sqlite/SQLiteActivity.h"

#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

#include <algorithm>

namespace ZELWbr3::SQLite {

namespace {

struct ByWord {
  std::size_t Index;
  const char* Word;
};
constexpr ByWord kByWord[] = {{1, "CREATE"},  {3, "ALTER"},   {5, "DROP"},    {6, "ROLLBACK"}, {7, "COMMIT"},
                              {10, "UPDATE"}, {13, "DELETE"}, {16, "SELECT"}, {19, "INSERT"}};

struct ByFigure {
  std::size_t Index;
  std::int64_t StatementCounter::Figures::*Figure;
};
constexpr ByFigure kByFigure[] = {
    {0, &StatementCounter::Figures::Runs},       {2, &StatementCounter::Figures::Prepares},
    {4, &StatementCounter::Figures::Runs},       {18, &StatementCounter::Figures::Rows},
    {21, &StatementCounter::Figures::FullScans}, {24, &StatementCounter::Figures::Sorts}};

}  // namespace

bool SQLiteActivity::Refresh() {
  Forget();
  if (!m_oFile->RefreshFigures()) return false;
  Counters();
  return true;
}

SQLiteActivity::Values SQLiteActivity::Read() const {
  Values oValues;
  const auto oReading = m_oFile->Read();
  const Usage* pUsage = oReading->Figures();
  const Connection* pConnection = pUsage ? m_oFile->Current() : nullptr;
  if (!pConnection) return oValues;

  const StatementCounter& oCounter = pConnection->Counter();
  for (const ByWord& oByWord : kByWord) oValues.SQL[oByWord.Index] = static_cast<double>(oCounter.Runs(oByWord.Word));
  for (const ByFigure& oByFigure : kByFigure) {
    oValues.SQL[oByFigure.Index] = static_cast<double>(oCounter.Total().*oByFigure.Figure);
  }
  const auto lWrites = static_cast<double>(pUsage->CacheWrites);
  oValues.IO[0] = static_cast<double>(pUsage->CacheMisses);
  oValues.IO[1] = static_cast<double>(pUsage->CacheHits + pUsage->CacheMisses);
  oValues.IO[2] = lWrites;
  // What a connection writes in WAL mode, it writes to the log.
  if (pUsage->UsesWal) oValues.Log[0] = lWrites;
  if (const auto oLocks = OpenFiles::Locks()) {
    const auto oHolders = OpenFiles::Holders(pUsage->File);
    oValues.Lock[5] = static_cast<double>(std::ranges::count_if(oHolders, [&](const auto& oProcess) {
      return std::ranges::any_of(*oLocks, [&](const auto& oLock) {
        return oLock.Process == oProcess.ID && oLock.Inode == pUsage->File.Inode;
      });
    }));
  }
  return oValues;
}

}  // namespace ZELWbr3::SQLite
