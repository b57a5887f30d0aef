#include "zelwbr3/instances/sqlite/rows/StatementReader.h"

#include "zelwbr3/instances/common/rows/CellTexts.h"
#include "zelwbr3/instances/sqlite/file/Connection.h"

#include <sqlite3.h>

#include <utility>

namespace ZELWbr3::SQLite {

namespace {

bool IsTooLong(const ZELLib3::InstanceError& oError) {
  return (oError.ErrorObject().ErrorCode & 0xff) == SQLITE_TOOBIG;
}

}  // namespace

bool StatementReader::Read(Connection& oConnection, Instances::RowBlock& oBlock) {
  bool bMore = true;
  bool bTooLong = true;
  while (bTooLong) {
    try {
      bTooLong = false;
      bMore = Continue(oConnection, oBlock);
    } catch (const ZELLib3::InstanceError& oError) {
      bTooLong = IsTooLong(oError) && !oBlock.IsFull();
      // What is in the block is shown first; the next one says what is wrong.
      if (!bTooLong && oBlock.Rows().empty()) throw;
    }
    if (!bTooLong) continue;
    try {
      oBlock.Add(LongRow(oConnection, oBlock.Rows().size()));
    } catch (const ZELLib3::InstanceError&) {
      if (oBlock.Rows().empty()) throw;
      bTooLong = false;
    }
  }
  Deliver(oBlock);
  return bMore;
}

Instances::RowTexts StatementReader::LongRow(Connection&, std::size_t) {
  RaiseError(SQLITE_TOOBIG, "a row", "is too long to be read");
}

std::vector<Instances::RowColumn> StatementReader::ColumnsOf(const Statement& oStatement, int iFirst) {
  std::vector<Instances::RowColumn> oColumns;
  for (int i = iFirst; i < oStatement.ColumnCount(); ++i) {
    oColumns.push_back({oStatement.ColumnName(i), oStatement.ColumnType(i)});
  }
  return oColumns;
}

Instances::RowTexts StatementReader::RowOf(const Statement& oStatement, int iFirst, const std::string& sAsked) const {
  const int iColumns = oStatement.ColumnCount();
  if (iColumns != iFirst + static_cast<int>(m_oColumns.size())) {
    RaiseError(SQLITE_SCHEMA, sAsked, "the columns have changed; refresh the page");
  }
  Instances::RowTexts oRow;
  oRow.reserve(m_oColumns.size());
  for (int i = iFirst; i < iColumns; ++i) oRow.push_back(oStatement.CellText(i));
  return oRow;
}

std::string StatementReader::LongCell(const std::string& sColumn, const Ask& fnAsk) {
  try {
    return fnAsk(sColumn).CellText(0);
  } catch (const ZELLib3::InstanceError& oError) {
    if (!IsTooLong(oError)) throw;
  }
  // Of a column that is stored, neither these read the value.
  if (fnAsk("typeof(" + sColumn + ")").Text(0) == "blob") {
    return Instances::CellTexts::OfBlob({}, fnAsk("length(" + sColumn + ")").Number(0));
  }
  return "… (more than " + std::to_string(Connection::LongestValue) + " bytes)";
}

}  // namespace ZELWbr3::SQLite
