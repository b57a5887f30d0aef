#include "zelwbr3/instances/sqlite/rows/TablewiseReader.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"
#include "zelwbr3/instances/sqlite/rows/TableKey.h"

#include <sqlite3.h>

#include <algorithm>
#include <cctype>

namespace ZELWbr3::SQLite {

namespace {

/// What one table may take of the time for a block.
constexpr std::chrono::seconds kTimeForTable(1);

/// The options of a table follow its last bracket, such as "STRICT".
bool IsStrict(const std::string& sSQL) {
  std::string sOptions = sSQL.substr(std::min(sSQL.size(), sSQL.rfind(')')));
  std::ranges::transform(sOptions, sOptions.begin(), [](unsigned char c) { return std::toupper(c); });
  return sOptions.find("STRICT") != std::string::npos;
}

}  // namespace

std::vector<SchemaTable> SchemaTable::All(Connection& oConnection) {
  const std::string sAsked = "reading the schema";
  std::vector<SchemaTable> oTables;
  Statement oNames = oConnection.Prepare("SELECT name FROM pragma_database_list", sAsked);
  while (oNames.Step()) {
    const std::string sSchema = oNames.Text(0);
    oTables.push_back({sSchema, sSchema == "temp" ? "sqlite_temp_schema" : "sqlite_schema", "table"});
    Statement oEntries =
        oConnection.Prepare("SELECT name, iif(type = 'table' AND rootpage = 0, 'virtual', type), sql FROM " +
                                SchemaTableOf(sSchema) + " WHERE type IN ('table', 'view')",
                            sAsked);
    while (oEntries.Step()) {
      const std::string sType = oEntries.Text(1);
      oTables.push_back(
          {sSchema, oEntries.Text(0), sType, sType == "table" && ::ZELWbr3::SQLite::IsStrict(oEntries.Text(2))});
    }
  }
  std::ranges::sort(oTables, {}, [](const SchemaTable& o) { return std::tie(o.Schema, o.Name); });
  return oTables;
}

TablewiseReader::TablewiseReader(Connection& oConnection, std::vector<Instances::RowColumn> oColumns, RowsOf fnRows,
                                 RowOfError fnErrorRow)
    : m_oTables(SchemaTable::All(oConnection)), m_fnRows(fnRows), m_fnErrorRow(fnErrorRow) {
  m_oColumns = std::move(oColumns);
}

bool TablewiseReader::Continue(Connection& oConnection, Instances::RowBlock& oBlock) {
  if (oBlock.Rows().empty()) m_oRead = m_oDelivered;
  for (; m_oRead.Table < m_oTables.size(); m_oRead = {m_oRead.Table + 1, 0}) {
    if (oBlock.IsFull()) return true;
    const std::vector<Instances::RowTexts> oRows = Rows(oConnection, m_oTables[m_oRead.Table]);
    for (; m_oRead.Row < oRows.size(); ++m_oRead.Row) {
      if (oBlock.IsFull()) return true;
      oBlock.Add(oRows[m_oRead.Row]);
    }
  }
  return false;
}

std::vector<Instances::RowTexts> TablewiseReader::Rows(Connection& oConnection, const SchemaTable& oTable) const {
  std::string sError;
  try {
    const Watchdog::TimeSlice oSlice(oConnection.Watchdog(), kTimeForTable);
    return m_fnRows(oConnection, oTable);
  } catch (const ZELLib3::InstanceError& oError) {
    if ((oError.ErrorObject().ErrorCode & 0xff) == SQLITE_BUSY) throw;
    sError = oError.what();
    sError.erase(0, std::min(sError.size(), sError.find(Asked)));
  }
  // Nothing is known of the table when there was no time left to ask.
  if (oConnection.Watchdog().IsUp())
    RaiseError(SQLITE_INTERRUPT, oTable.Name, "interrupted: it took too long, or was stopped");
  return {m_fnErrorRow(oTable, sError)};
}

}  // namespace ZELWbr3::SQLite
