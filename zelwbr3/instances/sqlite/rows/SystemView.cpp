#include "zelwbr3/instances/sqlite/rows/SystemView.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"
#include "zelwbr3/instances/sqlite/rows/SystemQueries.h"
#include "zelwbr3/instances/sqlite/rows/TableKey.h"
#include "zelwbr3/instances/sqlite/rows/TablewiseReader.h"

#include <sqlite3.h>

#include <algorithm>
#include <vector>

namespace ZELWbr3::SQLite {

namespace {

using SystemQueries::Query;

std::unique_ptr<RowReader> SchemaEntries(Connection& oConnection) {
  return SystemQueries::Schema(oConnection, "type, name, tbl_name AS \"table\", rootpage AS \"root page\", sql",
                               "true");
}
std::unique_ptr<RowReader> Triggers(Connection& oConnection) {
  return SystemQueries::Schema(oConnection, "name, tbl_name AS \"table\", sql", "type = 'trigger'");
}
std::unique_ptr<RowReader> Views(Connection& oConnection) {
  return SystemQueries::Schema(oConnection, "name, sql", "type = 'view'");
}

std::unique_ptr<RowReader> Statistics(Connection& oConnection) {
  return SystemQueries::Optional(oConnection, "sqlite_stat1",
                                 {{"tbl", "table"}, {"idx", "index"}, {"stat", "rows, and rows a key"}});
}

/// The header as it stands in the file. Of a file in WAL mode the log may hold a
/// newer one.
std::unique_ptr<RowReader> Header(Connection& oConnection) {
  struct Field {
    int Offset;
    int Bytes;
    const char* Name;
    const char* Title;
  };
  static constexpr Field kFields[] = {
      {16, 2, "Page size", "Bytes; 1 stands for 65536"},
      {18, 1, "Version to write", "1 rollback journal, 2 write-ahead log"},
      {19, 1, "Version to read", "1 rollback journal, 2 write-ahead log"},
      {20, 1, "Reserved space", "Bytes at the end of each page that extensions may use"},
      {24, 4, "Change counter", "Counts transactions, unless the file is in WAL mode"},
      {28, 4, "Pages", "Size of the file; valid when the change counter is the one under \"Valid for\""},
      {32, 4, "First free page", "First page of the list of free pages; 0 without any"},
      {36, 4, "Free pages", "Pages that are kept for reuse"},
      {40, 4, "Schema cookie", "Counts changes of the schema"},
      {44, 4, "Schema format", "1 to 4; 4 knows descending indexes"},
      {48, 4, "Default cache size", "Pages that a connection begins with; 0 when none was set"},
      {52, 4, "Largest root page", "Above 0 when free pages can be given back to the system"},
      {56, 4, "Text encoding", "1 UTF-8, 2 UTF-16 little-endian, 3 UTF-16 big-endian"},
      {60, 4, "User version", "For the application's own use"},
      {64, 4, "Incremental vacuum", "Above 0 when free pages are given back on demand only"},
      {68, 4, "Application ID", "Which application the file belongs to"},
      {92, 4, "Valid for", "Change counter at the time of the last writer's version"},
      {96, 4, "Last writer's version", "Of the library: 3040001 is 3.40.1"},
  };
  const FileHeader::Bytes oBytes = FileHeader::ReadBytes(oConnection.MainFile(), "the database file");
  std::vector<Instances::RowColumn> oColumns;
  Instances::RowTexts oRow;
  for (const Field& oField : kFields) {
    std::uint32_t lValue = 0;
    for (int i = 0; i < oField.Bytes; ++i) lValue = lValue << 8 | oBytes[static_cast<std::size_t>(oField.Offset + i)];
    oColumns.push_back({oField.Name, oField.Title});
    oRow.push_back(std::to_string(lValue));
  }
  return std::make_unique<ListReader>(std::move(oColumns), std::vector<Instances::RowTexts>{std::move(oRow)});
}

std::unique_ptr<RowReader> Statements(Connection& oConnection) {
  std::vector<Instances::RowTexts> oRows;
  for (const auto& [sText, oFigures] : oConnection.Counter().ByText()) {
    oRows.push_back({sText, std::to_string(oFigures.Runs), std::to_string(oFigures.Rows),
                     std::to_string(oFigures.Nanoseconds / 1000), std::to_string(oFigures.Steps),
                     std::to_string(oFigures.FullScanSteps), std::to_string(oFigures.Sorts),
                     std::to_string(oFigures.AutoIndexRows), std::to_string(oFigures.Prepares)});
  }
  return std::make_unique<ListReader>(
      std::vector<Instances::RowColumn>{
          {"statement"},
          {"runs"},
          {"rows", "Rows delivered"},
          {"time", "Microseconds from the beginning to the end of each run, waiting included"},
          {"steps", "Steps of the library's virtual machine"},
          {"scan steps", "Rows stepped over in tables that were searched without an index"},
          {"sorts", "Sorts that no index has saved"},
          {"index rows", "Rows put into indexes that were made for one run"},
          {"prepares", "How often the statement was translated"}},
      std::move(oRows));
}

std::unique_ptr<RowReader> Counters(Connection& oConnection) {
  struct Counter {
    int Code;
    const char* Name;
    const char* Description;
  };
  static constexpr Counter kLibrary[] = {
      {SQLITE_STATUS_MEMORY_USED, "memory used", "Bytes that the library has allocated"},
      {SQLITE_STATUS_MALLOC_COUNT, "allocations", "Allocations that are not freed yet"},
      {SQLITE_STATUS_MALLOC_SIZE, "largest allocation", "Bytes, the highest is what counts"},
      {SQLITE_STATUS_PAGECACHE_USED, "page cache used", "Pages out of the memory set aside for page caches"},
      {SQLITE_STATUS_PAGECACHE_OVERFLOW, "page cache overflow", "Bytes of page caches from general memory"},
      {SQLITE_STATUS_PAGECACHE_SIZE, "largest page", "Bytes asked for page caches at a time, the highest counts"},
  };
  static constexpr Counter kConnection[] = {
      {SQLITE_DBSTATUS_CACHE_USED, "page cache", "Bytes of this connection's page caches"},
      {SQLITE_DBSTATUS_CACHE_HIT, "page cache hits", "Pages found in the cache"},
      {SQLITE_DBSTATUS_CACHE_MISS, "page cache misses", "Pages read from the file or its log"},
      {SQLITE_DBSTATUS_CACHE_WRITE, "pages written", "Pages written to the file or its log"},
      {SQLITE_DBSTATUS_CACHE_SPILL, "pages spilled", "Pages written before the end of their transaction"},
      {SQLITE_DBSTATUS_SCHEMA_USED, "schema memory", "Bytes that hold the schema"},
      {SQLITE_DBSTATUS_STMT_USED, "statement memory", "Bytes that hold prepared statements"},
      {SQLITE_DBSTATUS_LOOKASIDE_USED, "lookaside slots", "Slots in use of the memory set aside for the connection"},
      {SQLITE_DBSTATUS_DEFERRED_FKS, "deferred foreign keys", "0 when no constraint is violated at the moment"},
  };
  std::vector<Instances::RowTexts> oRows;
  for (const Counter& oCounter : kLibrary) {
    sqlite3_int64 lNow = 0;
    sqlite3_int64 lHighest = 0;
    if (sqlite3_status64(oCounter.Code, &lNow, &lHighest, 0) != SQLITE_OK) continue;
    oRows.push_back({"library", oCounter.Name, std::to_string(lNow), std::to_string(lHighest), oCounter.Description});
  }
  for (const Counter& oCounter : kConnection) {
    int lNow = 0;
    int lHighest = 0;
    if (sqlite3_db_status(oConnection.Handle(), oCounter.Code, &lNow, &lHighest, 0) != SQLITE_OK) continue;
    // The library keeps the highest value of the slots only.
    const bool bHighest = oCounter.Code == SQLITE_DBSTATUS_LOOKASIDE_USED;
    oRows.push_back({"connection", oCounter.Name, std::to_string(lNow), bHighest ? std::to_string(lHighest) : "(null)",
                     oCounter.Description});
  }
  return std::make_unique<ListReader>(
      std::vector<Instances::RowColumn>{{"of", "The library in this process, or this connection"},
                                        {"counter"},
                                        {"now"},
                                        {"highest", "Since the process began"},
                                        {"description"}},
      std::move(oRows));
}

std::unique_ptr<RowReader> Limits(Connection& oConnection) {
  static constexpr std::pair<int, const char*> kLimits[] = {
      {SQLITE_LIMIT_LENGTH, "bytes of a text, a blob or a row"},
      {SQLITE_LIMIT_SQL_LENGTH, "bytes of a statement"},
      {SQLITE_LIMIT_COLUMN, "columns of a table, an index or a result"},
      {SQLITE_LIMIT_EXPR_DEPTH, "depth of an expression"},
      {SQLITE_LIMIT_COMPOUND_SELECT, "parts of a compound query"},
      {SQLITE_LIMIT_VDBE_OP, "instructions of a prepared statement"},
      {SQLITE_LIMIT_FUNCTION_ARG, "arguments of a function"},
      {SQLITE_LIMIT_ATTACHED, "attached databases"},
      {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, "bytes of a pattern"},
      {SQLITE_LIMIT_VARIABLE_NUMBER, "highest number of a parameter"},
      {SQLITE_LIMIT_TRIGGER_DEPTH, "depth of triggers that fire triggers"},
      {SQLITE_LIMIT_WORKER_THREADS, "helping threads of a statement"},
  };
  std::vector<Instances::RowTexts> oRows;
  for (const auto& [lCode, sName] : kLimits) {
    oRows.push_back({sName, std::to_string(sqlite3_limit(oConnection.Handle(), lCode, -1))});
  }
  return std::make_unique<ListReader>(std::vector<Instances::RowColumn>{{"limit"}, {"value"}}, std::move(oRows));
}

std::string Text(bool b) { return b ? "1" : "0"; }

std::unique_ptr<RowReader> Tables(Connection& oConnection) {
  const auto fnRows = [](Connection& o, const SchemaTable& oTable) -> std::vector<Instances::RowTexts> {
    Statement oColumns = o.Prepare("SELECT count(*) FROM pragma_table_xinfo(?1, ?2)", TablewiseReader::Asked);
    oColumns.BindText(1, oTable.Name);
    oColumns.BindText(2, oTable.Schema);
    oColumns.Step();
    const bool bWithoutRowid = oTable.Type == "table" && IsWithoutRowid(o, oTable.Schema, oTable.Name);
    return {{oTable.Schema, oTable.Name, oTable.Type, oColumns.Text(0), Text(bWithoutRowid), Text(oTable.IsStrict)}};
  };
  const auto fnErrorRow = [](const SchemaTable& oTable, const std::string&) -> Instances::RowTexts {
    return {oTable.Schema, oTable.Name, oTable.Type, "(null)", "0", "0"};
  };
  return std::make_unique<TablewiseReader>(
      oConnection,
      std::vector<Instances::RowColumn>{{"schema"}, {"name"}, {"type"}, {"columns"}, {"without rowid"}, {"strict"}},
      fnRows, fnErrorRow);
}

std::unique_ptr<RowReader> Columns(Connection& oConnection) {
  const auto fnRows = [](Connection& o, const SchemaTable& oTable) {
    Statement oColumns = o.Prepare(
        "SELECT cid + 1, name, type, \"notnull\", dflt_value, pk, hidden FROM pragma_table_xinfo(?1, ?2) ORDER BY cid",
        TablewiseReader::Asked);
    oColumns.BindText(1, oTable.Name);
    oColumns.BindText(2, oTable.Schema);
    std::vector<Instances::RowTexts> oRows;
    while (oColumns.Step()) {
      Instances::RowTexts& oRow = oRows.emplace_back(Instances::RowTexts{oTable.Schema, oTable.Name});
      for (int i = 0; i < oColumns.ColumnCount(); ++i) oRow.push_back(oColumns.CellText(i));
    }
    return oRows;
  };
  const auto fnErrorRow = [](const SchemaTable& oTable, const std::string& sError) -> Instances::RowTexts {
    return {oTable.Schema, oTable.Name, "(null)", "(null)", sError, "(null)", "(null)", "(null)", "(null)"};
  };
  return std::make_unique<TablewiseReader>(
      oConnection,
      std::vector<Instances::RowColumn>{{"schema"},
                                        {"table"},
                                        {"position"},
                                        {"column"},
                                        {"type", "Or why the columns are not known"},
                                        {"not null"},
                                        {"default"},
                                        {"primary key"},
                                        {"hidden"}},
      fnRows, fnErrorRow);
}

constexpr SystemView kViews[] = {
    {"DATABASES", "Database files of this connection", false,
     &Query<"SELECT seq AS number, name, file FROM pragma_database_list">},
    {"FILE HEADER", "The first 100 bytes of the database file", true, &Header},
    {"SCHEMA", "Everything that is defined, with the statement that defines it", false, &SchemaEntries},
    {"TABLES", "Tables and views", false, &Tables},
    {"COLUMNS", "Columns of tables and views", false, &Columns},
    {"VIEWS", "Views and their statements", false, &Views},
    {"TRIGGERS", "Triggers and their statements", false, &Triggers},
    {"INDEXES", "Indexes", false,
     &Query<"SELECT t.schema, t.name AS \"table\", i.name AS \"index\", i.\"unique\", i.origin, i.partial"
            " FROM $tables AS t CROSS JOIN pragma_index_list(t.name, t.schema) AS i"
            " ORDER BY t.schema, t.name, i.name">},
    {"INDEX COLUMNS", "What the indexes are sorted by", false,
     &Query<"SELECT t.schema, t.name AS \"table\", i.name AS \"index\", x.seqno + 1 AS position,"
            " coalesce(x.name, iif(x.cid = -1, 'rowid', 'expression')) AS column, x.\"desc\" AS descending,"
            " x.coll AS collation FROM $tables AS t CROSS JOIN pragma_index_list(t.name, t.schema) AS i"
            " CROSS JOIN pragma_index_xinfo(i.name, t.schema) AS x WHERE x.key"
            " ORDER BY t.schema, t.name, i.name, x.seqno">},
    {"FOREIGN KEYS", "Foreign keys", false,
     &Query<"SELECT t.schema, t.name AS \"table\", f.id AS number, f.seq + 1 AS position, f.\"from\" AS column,"
            " f.\"table\" AS \"referenced table\", f.\"to\" AS \"referenced column\", f.on_update AS \"on update\","
            " f.on_delete AS \"on delete\" FROM $tables AS t"
            " CROSS JOIN pragma_foreign_key_list(t.name, t.schema) AS f"
            " ORDER BY t.schema, t.name, f.id, f.seq">},
    {"STATISTICS", "What ANALYZE has found out for the choice of indexes", false, &Statistics},
    {"SPACE", "Pages of each table and index; reads the whole file", false,
     &Query<"SELECT name, pageno AS pages, pgsize AS bytes, ncell AS cells, payload AS \"bytes of data\","
            " unused AS \"bytes unused\", mx_payload AS \"largest entry\" FROM dbstat WHERE aggregate = true"
            " ORDER BY pgsize DESC, name">},
    {"PAGES", "Each page of the tables and indexes; reads the whole file", false,
     &Query<"SELECT pageno AS page, name, path, pagetype AS type, ncell AS cells, payload AS \"bytes of data\","
            " unused AS \"bytes unused\" FROM dbstat">},
    {"STATEMENTS", "What the statements of this connection have done", false, &Statements},
    {"COUNTERS", "Memory and page cache of this process and this connection", false, &Counters},
    {"LIMITS", "Limits of this connection", false, &Limits},
    {"COLLATIONS", "Orders in which texts can be compared", false,
     &Query<"SELECT name FROM pragma_collation_list ORDER BY name">},
    {"FUNCTIONS", "Functions that statements can call", false,
     &Query<"SELECT name, narg AS arguments, type, enc AS encoding, builtin AS \"built in\", flags"
            " FROM pragma_function_list ORDER BY name, narg">},
    {"MODULES", "Kinds of virtual tables", false, &Query<"SELECT name FROM pragma_module_list ORDER BY name">},
    {"PRAGMAS", "Pragmas that the library knows", false, &Query<"SELECT name FROM pragma_pragma_list ORDER BY name">},
    {"COMPILE OPTIONS", "How the library was compiled", false,
     &Query<"SELECT compile_options AS option FROM pragma_compile_options">},
};

bool CanBeFilled(const SystemView& oView) {
  const std::string sName = oView.Name;
  return (sName != "SPACE" && sName != "PAGES") || sqlite3_compileoption_used("ENABLE_DBSTAT_VTAB") != 0;
}

}  // namespace

std::span<const SystemView> SystemView::All() {
  static const std::vector<SystemView> oViews = [] {
    std::vector<SystemView> oResult;
    std::ranges::copy_if(kViews, std::back_inserter(oResult), &CanBeFilled);
    return oResult;
  }();
  return oViews;
}

}  // namespace ZELWbr3::SQLite
