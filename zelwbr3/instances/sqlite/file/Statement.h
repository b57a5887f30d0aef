#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;
struct sqlite3_value;

namespace ZELWbr3::SQLite {

struct FreeValue {
  void operator()(sqlite3_value* pValue) const;
};

/// A value as a database stores it, kept beyond the row it was read from.
using StoredValue = std::unique_ptr<sqlite3_value, FreeValue>;

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
  /// As a page shows it: "(null)" for no value, a blob as its size and the first
  /// bytes in hexadecimal, a text of more than 1 MB cut and with its size,
  /// anything else whole.
  std::string CellText(int iColumn) const;
  StoredValue Value(int iColumn) const;

  int ColumnCount() const;
  std::string ColumnName(int iColumn) const;
  /// The type that the table's definition gives, "(null)" for an expression.
  std::string ColumnType(int iColumn) const;

  /// Parameters count from 1. A text is bound without a copy: it outlives the
  /// steps.
  void BindNumber(int iIndex, std::int64_t lValue);
  void BindText(int iIndex, std::string_view sText);
  void BindValue(int iIndex, const StoredValue& oValue);

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
  void Bind(int iIndex, std::string_view sText) { BindText(iIndex, sText); }
  void Bind(int iIndex, std::nullptr_t);
  void Check(int rc) const;

  sqlite3_stmt* m_pStatement = nullptr;
  std::string m_sAsked;
};

}  // namespace ZELWbr3::SQLite
