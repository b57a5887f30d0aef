#include "zelwbr3/instances/sqlite/file/Statement.h"

#include "zelwbr3/instances/common/rows/CellTexts.h"
#include "zelwbr3/instances/sqlite/file/Handle.h"

#include <sqlite3.h>

#include <utility>

namespace ZELWbr3::SQLite {

void FreeValue::operator()(sqlite3_value* pValue) const { sqlite3_value_free(pValue); }

Statement::Statement(sqlite3* pHandle, std::string_view sSQL, std::string sAsked) : m_sAsked(std::move(sAsked)) {
  const int lLength = static_cast<int>(sSQL.size());
  if (sqlite3_prepare_v3(pHandle, sSQL.data(), lLength, SQLITE_PREPARE_PERSISTENT, &m_pStatement, nullptr)) {
    RaiseLastError(pHandle, m_sAsked);
  }
}

Statement::~Statement() { sqlite3_finalize(m_pStatement); }

Statement::Statement(Statement&& oOther) noexcept
    : m_pStatement(std::exchange(oOther.m_pStatement, nullptr)), m_sAsked(std::move(oOther.m_sAsked)) {}

bool Statement::Step() {
  const int rc = sqlite3_step(m_pStatement);
  if (rc == SQLITE_ROW) return true;
  if (rc == SQLITE_DONE) return false;
  try {
    RaiseLastError(sqlite3_db_handle(m_pStatement), m_sAsked);
  } catch (...) {
    Reset();  // gives the lock back; after the error has been read
    throw;
  }
}

void Statement::Reset() { sqlite3_reset(m_pStatement); }

std::int64_t Statement::Number(int iColumn) const { return sqlite3_column_int64(m_pStatement, iColumn); }

std::string Statement::Text(int iColumn) const {
  const auto* sText = reinterpret_cast<const char*>(sqlite3_column_text(m_pStatement, iColumn));
  return sText ? std::string(sText, static_cast<std::size_t>(sqlite3_column_bytes(m_pStatement, iColumn))) : "";
}

std::string Statement::CellText(int iColumn) const {
  switch (sqlite3_column_type(m_pStatement, iColumn)) {
    case SQLITE_NULL:
      return "(null)";
    case SQLITE_BLOB: {
      // In this order: the pointer is what the size belongs to.
      const auto* pBytes = static_cast<const char*>(sqlite3_column_blob(m_pStatement, iColumn));
      const int iBytes = sqlite3_column_bytes(m_pStatement, iColumn);
      return Instances::CellTexts::OfBlob({pBytes, static_cast<std::size_t>(iBytes)}, iBytes);
    }
    default:
      return Instances::CellTexts::OfText(Text(iColumn));
  }
}

StoredValue Statement::Value(int iColumn) const {
  return StoredValue(sqlite3_value_dup(sqlite3_column_value(m_pStatement, iColumn)));
}

int Statement::ColumnCount() const { return sqlite3_column_count(m_pStatement); }

std::string Statement::ColumnName(int iColumn) const {
  const char* sName = sqlite3_column_name(m_pStatement, iColumn);
  return sName ? sName : "";
}

std::string Statement::ColumnType(int iColumn) const {
  const char* sType = sqlite3_column_decltype(m_pStatement, iColumn);
  return sType ? sType : "(null)";
}

void Statement::BindValue(int iIndex, const StoredValue& oValue) {
  Check(sqlite3_bind_value(m_pStatement, iIndex, oValue.get()));
}

void Statement::BindText(int iIndex, std::string_view sText) {
  Check(sqlite3_bind_text64(m_pStatement, iIndex, sText.data(), sText.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::Bind(int iIndex, std::nullptr_t) { Check(sqlite3_bind_null(m_pStatement, iIndex)); }

void Statement::BindNumber(int iIndex, std::int64_t lValue) { Check(sqlite3_bind_int64(m_pStatement, iIndex, lValue)); }

void Statement::Check(int rc) const {
  if (rc != SQLITE_OK) RaiseLastError(sqlite3_db_handle(m_pStatement), m_sAsked);
}

}  // namespace ZELWbr3::SQLite
