#include "zelwbr3/instances/sqlite/rows/TableKey.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"

#include <sqlite3.h>

#include <algorithm>

namespace ZELWbr3::SQLite {

namespace {

/// Two names in the library's eyes.
bool IsSameName(const std::string& sOne, const char* sOther) { return sqlite3_stricmp(sOne.c_str(), sOther) == 0; }

struct FoundTable {
  std::string Schema;    ///< empty when there is none
  bool HasRoot = false;  ///< stored in the file: no view, no virtual table
  bool WithoutRowid = false;
};

/// Without a schema a name means the temporary table first, then the main
/// database's, then those of the attached ones.
///
/// From the schema table: pragma_table_list would prepare every view there is.
FoundTable Find(Connection& oConnection, const std::string& sSchema, const std::string& sTable) {
  Statement oSchemas = oConnection.Prepare(
      "SELECT name FROM pragma_database_list WHERE ?1 = '' OR name = ?1 COLLATE NOCASE ORDER BY name <> 'temp', seq",
      "looking up a table");
  oSchemas.BindText(1, sSchema);
  while (oSchemas.Step()) {
    const std::string sFound = oSchemas.Text(0);
    Statement oTable = oConnection.Prepare("SELECT type = 'table' AND rootpage > 0 FROM " + SchemaTableOf(sFound) +
                                               " WHERE type IN ('table', 'view') AND name = ?1 COLLATE NOCASE",
                                           "looking up a table");
    oTable.BindText(1, sTable);
    if (!oTable.Step()) continue;
    FoundTable oResult{sFound, oTable.Number(0) != 0};
    if (oResult.HasRoot) oResult.WithoutRowid = IsWithoutRowid(oConnection, sFound, sTable);
    return oResult;
  }
  return {};
}

std::vector<std::string> ColumnNames(Connection& oConnection, const FoundTable& oTable, const std::string& sTable) {
  Statement oStatement = oConnection.Prepare("SELECT name FROM pragma_table_xinfo(?1, ?2)", "reading the columns");
  oStatement.BindText(1, sTable);
  oStatement.BindText(2, oTable.Schema);
  std::vector<std::string> oNames;
  while (oStatement.Step()) oNames.push_back(oStatement.Text(0));
  return oNames;
}

/// What the rowid can be called: a column takes a name away from it.
TableKey Rowid(const std::vector<std::string>& oColumns) {
  for (const char* sName : {"rowid", "_rowid_", "oid"}) {
    const auto IsName = [&](const std::string& sColumn) { return IsSameName(sColumn, sName); };
    if (std::ranges::none_of(oColumns, IsName)) return {{sName}, false, true, {}, {}};
  }
  return {};
}

TableKey PrimaryKey(Connection& oConnection, const FoundTable& oTable, const std::string& sTable) {
  Statement oStatement = oConnection.Prepare(
      "SELECT x.name, x.\"desc\", x.coll FROM pragma_index_list(?1, ?2) AS i CROSS JOIN pragma_index_xinfo(i.name, ?2) "
      "AS x"
      " WHERE i.origin = 'pk' AND x.key ORDER BY x.seqno",
      "reading the primary key");
  oStatement.BindText(1, sTable);
  oStatement.BindText(2, oTable.Schema);
  TableKey oKey;
  while (oStatement.Step()) {
    const std::string sColumn = oStatement.Text(0);
    const bool bDescending = oStatement.Number(1) != 0;
    if (oKey.Columns.empty()) oKey.Descending = bDescending;
    // A comparison goes by the column's collation; when the key has another
    // one, it is of no use for continuing.
    const char* sCollation = nullptr;
    sqlite3_table_column_metadata(oConnection.Handle(), oTable.Schema.c_str(), sTable.c_str(), sColumn.c_str(), nullptr,
                                  &sCollation, nullptr, nullptr, nullptr);
    if (!sCollation || !IsSameName(oStatement.Text(2), sCollation) || bDescending != oKey.Descending) return {};
    oKey.Columns.push_back(QuoteIdentifier(sColumn));
  }
  return oKey;
}

std::string Joined(const std::vector<std::string>& oTexts, const char* sAfter) {
  std::string sResult;
  for (const std::string& sText : oTexts) sResult += (sResult.empty() ? "" : ", ") + sText + sAfter;
  return sResult;
}

}  // namespace

std::string QuoteIdentifier(const std::string& sName) {
  std::string sQuoted = "\"";
  for (const char c : sName) sQuoted += c == '"' ? "\"\"" : std::string(1, c);
  return sQuoted + "\"";
}

std::string SchemaTableOf(const std::string& sSchema) {
  return QuoteIdentifier(sSchema) + (sSchema == "temp" ? ".sqlite_temp_schema" : ".sqlite_schema");
}

bool IsWithoutRowid(Connection& oConnection, const std::string& sSchema, const std::string& sTable) {
  // The index of a primary key ends with the rowid (column -1) when there is one.
  Statement oStatement = oConnection.Prepare(
      "SELECT 1 FROM pragma_index_list(?1, ?2) AS i WHERE i.origin = 'pk' AND NOT EXISTS"
      " (SELECT 1 FROM pragma_index_xinfo(i.name, ?2) AS x WHERE x.cid = -1)",
      "looking up a table");
  oStatement.BindText(1, sTable);
  oStatement.BindText(2, sSchema);
  return oStatement.Step();
}

TableKey TableKey::Of(Connection& oConnection, const std::string& sSchema, const std::string& sTable) {
  const FoundTable oTable = Find(oConnection, sSchema, sTable);
  TableKey oKey;
  if (oTable.HasRoot) {
    oKey =
        oTable.WithoutRowid ? PrimaryKey(oConnection, oTable, sTable) : Rowid(ColumnNames(oConnection, oTable, sTable));
  }
  oKey.Schema = oTable.Schema;
  oKey.Table = sTable;
  return oKey;
}

std::string TableKey::From() const { return QuoteIdentifier(Schema) + "." + QuoteIdentifier(Table); }

std::string TableKey::List() const { return Joined(Columns, ""); }

std::string TableKey::Order() const { return Joined(Columns, Descending ? " DESC" : ""); }

}  // namespace ZELWbr3::SQLite
