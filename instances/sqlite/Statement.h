#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace ZELWbr3::SQLite {

/// A prepared statement. Lives no longer than its handle. Every failure raises
/// ZELLib3::InstanceError that names sAsked.
class Statement {
 public:
  Statement(sqlite3* pHandle, std::string_view sSQL, std::string sAsked);
  ~Statement();
  Statement(Statement&& oOther) noexcept;
  Statement& operator=(Statement&&) = delete;

  /// The next row; false at the end.
  bool Step();
  /// Ready to be stepped again from the first row.
  void Reset();

  /// Columns of the current row count from 0.
  std::int64_t Number(int iColumn) const;
  std::string Text(int iColumn) const;

  /// Binds the values to the parameters 1, 2, …, steps to the end and resets.
  /// A text is bound without a copy: it outlives the call.
  template <typename... Values>
  void Run(const Values&... values) {
    int iIndex = 0;
    (Bind(++iIndex, values), ...);
    while (Step()) {
    }
    Reset();
  }

 private:
  template <std::integral T>
  void Bind(int iIndex, T value) {
    BindNumber(iIndex, static_cast<std::int64_t>(value));
  }
  void Bind(int iIndex, std::string_view sText);
  void Bind(int iIndex, std::nullptr_t);
  void BindNumber(int iIndex, std::int64_t lValue);
  void Check(int rc) const;

  sqlite3_stmt* m_pStatement = nullptr;
  std::string m_sAsked;
};

}  // namespace ZELWbr3::SQLite
