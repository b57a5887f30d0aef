#pragma once

#include "zelwbr3/instances/sqlite/sample/SampleDatabase.h"

#include <cstdint>
#include <random>

struct sqlite3;

namespace ZELWbr3::SQLite {

/// Writes the rows of the sample database: a trading company with customers,
/// orders, stock and machines, over two years and one day. The same rows each
/// time; all names are made up of syllables and everyday words.
class SampleRows {
 public:
  SampleRows(sqlite3* pHandle, SampleProgress oProgress);

  /// Schema, all rows but the last day's, indexes, statistics, and the pages
  /// that old rows have left free.
  void WriteHistory();
  /// The last day: some dozens of transactions that use the trigger.
  void WriteToday();

 private:
  struct OrderStatements;

  void WriteCompany();
  void WriteTrade();
  void WriteReadings();
  void WriteOrder(OrderStatements& oStatements, std::int64_t lOrder, std::int64_t lDay);

  /// 0 to lCount - 1.
  std::int64_t Pick(std::int64_t lCount) { return static_cast<std::int64_t>(m_oRandom() % std::uint64_t(lCount)); }
  template <std::size_t N>
  const char* Pick(const char* const (&words)[N]) {
    return words[Pick(N)];
  }
  std::string Name();
  std::string Town();
  void Report(int iPercent);

  sqlite3* m_pHandle;
  SampleProgress m_oProgress;
  std::mt19937_64 m_oRandom{20240229};
};

}  // namespace ZELWbr3::SQLite
