#include "zelwbr3/instances/sqlite/rows/SystemQueries.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"
#include "zelwbr3/instances/sqlite/rows/TableKey.h"

namespace ZELWbr3::SQLite::SystemQueries {

Reader Query(Connection& oConnection, std::string sSQL) {
  constexpr std::string_view kSign = "$tables";
  constexpr std::string_view kTables =
      "(SELECT 'main' AS schema, name FROM main.sqlite_schema WHERE type = 'table' AND rootpage > 0"
      " UNION ALL SELECT 'temp', name FROM temp.sqlite_temp_schema WHERE type = 'table' AND rootpage > 0)";
  for (std::size_t i = 0; (i = sSQL.find(kSign, i)) != std::string::npos; i += kTables.size()) {
    sSQL.replace(i, kSign.size(), kTables);
  }
  return std::make_unique<CursorReader>(oConnection, std::move(sSQL), "reading system information");
}

Reader Schema(Connection& oConnection, const std::string& sColumns, const std::string& sWhere) {
  Statement oNames = oConnection.Prepare("SELECT name, quote(name) FROM pragma_database_list", "listing the databases");
  std::string sSQL;
  while (oNames.Step()) {
    const std::string sName = oNames.Text(0);
    if (!sSQL.empty()) sSQL += " UNION ALL ";
    sSQL += "SELECT " + oNames.Text(1) + " AS schema, " + sColumns;
    sSQL += " FROM " + SchemaTableOf(sName) + " WHERE " + sWhere;
  }
  return std::make_unique<CursorReader>(oConnection, sSQL, "reading the schema");
}

Reader Optional(Connection& oConnection, const std::string& sTable,
                const std::vector<std::pair<std::string, std::string>>& oColumns) {
  Statement oStatement =
      oConnection.Prepare("SELECT 1 FROM main.sqlite_schema WHERE name = ?1", "looking for " + sTable);
  oStatement.BindText(1, sTable);
  const bool bThere = oStatement.Step();
  std::string sList;
  std::vector<Instances::RowColumn> oHeadings;
  for (const auto& [sColumn, sHeading] : oColumns) {
    sList += (sList.empty() ? "" : ", ") + sColumn + " AS " + QuoteIdentifier(sHeading);
    oHeadings.push_back({sHeading});
  }
  if (!bThere) return std::make_unique<ListReader>(std::move(oHeadings), std::vector<Instances::RowTexts>{});
  return std::make_unique<CursorReader>(oConnection, "SELECT " + sList + " FROM main." + sTable, "reading " + sTable);
}

}  // namespace ZELWbr3::SQLite::SystemQueries
