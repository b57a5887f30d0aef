#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace ZELWbr3::SQLite {

/// Counts what the statements of one connection do, as the library's trace and
/// its statement counters tell. A statement counts when it has ended.
class StatementCounter {
 public:
  struct Figures {
    std::int64_t Runs = 0;
    std::int64_t Prepares = 0;   ///< of statements that were run
    std::int64_t Rows = 0;       ///< delivered
    std::int64_t FullScans = 0;  ///< runs that searched a table without an index
    std::int64_t FullScanSteps = 0;
    std::int64_t Sorts = 0;
    std::int64_t AutoIndexRows = 0;  ///< rows put into indexes made for one run
    std::int64_t Steps = 0;          ///< of the library's virtual machine
    std::int64_t Nanoseconds = 0;    ///< from begin to end, waiting included

    Figures& operator+=(const Figures& oOther);
  };

  StatementCounter() = default;
  StatementCounter(const StatementCounter&) = delete;
  StatementCounter& operator=(const StatementCounter&) = delete;

  /// Call once; this object outlives the handle.
  void Watch(sqlite3* pHandle);

  const Figures& Total() const { return m_oTotal; }
  /// Of the statements that begin with a word, given in upper case.
  std::int64_t Runs(std::string_view sWord) const;
  /// By the statement's text. Of texts beyond the first few hundred, all are
  /// counted under the one text "(other statements)".
  const std::map<std::string, Figures>& ByText() const { return m_oByText; }

 private:
  /// The library's own clock has milliseconds only.
  struct Running {
    std::chrono::steady_clock::time_point Began = std::chrono::steady_clock::now();
    std::int64_t Rows = 0;
  };

  static int OnTrace(unsigned lEvent, void* pThis, void* pStatement, void* pDetail);
  void Ended(sqlite3_stmt* pStatement);

  Figures m_oTotal;
  std::map<std::string, std::int64_t, std::less<>> m_oByWord;
  std::map<std::string, Figures> m_oByText;
  std::map<sqlite3_stmt*, Running> m_oRunning;
};

}  // namespace ZELWbr3::SQLite
