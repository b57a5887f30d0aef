#pragma once

#include <libpq-fe.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace ZELWbr3::Postgres {

/// The rows that a statement has given, as texts. Rows and columns count from 0;
/// a column that is not there raises std::out_of_range.
class Result {
 public:
  explicit Result(std::shared_ptr<PGresult> oResult) : m_oResult(std::move(oResult)) {}

  int Rows() const { return PQntuples(m_oResult.get()); }
  int Columns() const { return PQnfields(m_oResult.get()); }
  std::string Name(int iColumn) const { return PQfname(m_oResult.get(), iColumn); }
  /// The number of the column's type.
  std::uint32_t Type(int iColumn) const { return PQftype(m_oResult.get(), iColumn); }
  bool IsNull(int iRow, int iColumn) const { return PQgetisnull(m_oResult.get(), iRow, iColumn) != 0; }
  std::string Text(int iRow, int iColumn) const;
  /// Of a bytea.
  std::string Bytes(int iRow, int iColumn) const;
  /// Rounded down; raises std::out_of_range beyond 64 bits.
  std::int64_t Number(int iRow, int iColumn) const;

  /// The same by the column's name; a null reads as empty, 0 or false.
  bool IsNull(int iRow, const char* sColumn) const { return IsNull(iRow, Column(sColumn)); }
  std::string Text(int iRow, const char* sColumn) const { return Text(iRow, Column(sColumn)); }
  std::int64_t Number(int iRow, const char* sColumn) const { return Number(iRow, Column(sColumn)); }
  double Real(int iRow, const char* sColumn) const;
  bool Flag(int iRow, const char* sColumn) const { return Text(iRow, sColumn) == "t"; }
  /// No value for a null.
  std::optional<std::int64_t> Known(int iRow, const char* sColumn) const;

 private:
  int Column(const char* sColumn) const;

  std::shared_ptr<PGresult> m_oResult;
};

}  // namespace ZELWbr3::Postgres
