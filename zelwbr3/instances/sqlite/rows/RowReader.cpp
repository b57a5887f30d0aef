#include "zelwbr3/instances/sqlite/rows/RowReader.h"

#include "zelwbr3/instances/sqlite/file/Handle.h"
#include "zelwbr3/instances/sqlite/file/Statement.h"

#include <sqlite3.h>

namespace ZELWbr3::SQLite {

std::vector<Instances::RowColumn> RowReader::ColumnsOf(const Statement& oStatement, int iFirst) {
  std::vector<Instances::RowColumn> oColumns;
  for (int i = iFirst; i < oStatement.ColumnCount(); ++i) {
    oColumns.push_back({oStatement.ColumnName(i), oStatement.ColumnType(i)});
  }
  return oColumns;
}

Instances::RowTexts RowReader::RowOf(const Statement& oStatement, int iFirst, const std::string& sAsked) const {
  const int iColumns = oStatement.ColumnCount();
  if (iColumns != iFirst + static_cast<int>(m_oColumns.size())) {
    RaiseError(SQLITE_SCHEMA, sAsked, "the columns have changed; refresh the page");
  }
  Instances::RowTexts oRow;
  oRow.reserve(m_oColumns.size());
  for (int i = iFirst; i < iColumns; ++i) oRow.push_back(oStatement.CellText(i));
  return oRow;
}

}  // namespace ZELWbr3::SQLite
