#include "zelwbr3/instances/sqlite/rows/SystemTable.h"

#include "zelwbr3/instances/sqlite/rows/SystemQueries.h"

#include <sqlite3.h>

namespace ZELWbr3::SQLite {

namespace {

using SystemQueries::Query;

std::unique_ptr<RowReader> Sequences(Connection& oConnection) {
  return SystemQueries::Optional(oConnection, "sqlite_sequence", {{"name", "table"}, {"seq", "last value"}});
}

/// A system table that is the same as a system view.
struct Same {
  const char* Table;
  const char* View;
};

constexpr Same kSame[] = {
    {"TABLES", "TABLES"},
    {"COLUMNS", "COLUMNS"},
    {"VIEWS", "VIEWS"},
    {"SCHEMAS", "DATABASES"},
    {"INDEXES", "INDEXES"},
    {"INDEXCOLUMNS", "INDEX COLUMNS"},
    {"FOREIGNKEYCOLUMNS", "FOREIGN KEYS"},
    {"TRIGGERS", "TRIGGERS"},
    {"FUNCTIONS", "FUNCTIONS"},
    {"INDEXSTATISTICS", "STATISTICS"},
};

struct Own {
  const char* Table;
  SystemView::ReaderFactory MakeReader;
};

constexpr Own kOwn[] = {
    {"SEQUENCES", &Sequences},
    {"CONSTRAINTS",
     &Query<"SELECT t.schema, t.name AS \"table\", 'NOT NULL' AS type, c.name AS columns FROM $tables AS t"
            " CROSS JOIN pragma_table_xinfo(t.name, t.schema) AS c WHERE c.\"notnull\""
            " UNION ALL SELECT t.schema, t.name, 'PRIMARY KEY', group_concat(c.name, ', ') FROM $tables AS t"
            " CROSS JOIN pragma_table_xinfo(t.name, t.schema) AS c WHERE c.pk"
            " GROUP BY t.schema, t.name"
            " UNION ALL SELECT t.schema, t.name, 'UNIQUE', group_concat(x.name, ', ') FROM $tables AS t"
            " CROSS JOIN pragma_index_list(t.name, t.schema) AS i CROSS JOIN pragma_index_info(i.name, t.schema) AS x"
            " WHERE i.origin = 'u' GROUP BY t.schema, t.name, i.name"
            " UNION ALL SELECT t.schema, t.name, 'FOREIGN KEY', group_concat(f.\"from\", ', ')"
            " FROM $tables AS t CROSS JOIN pragma_foreign_key_list(t.name, t.schema) AS f"
            " GROUP BY t.schema, t.name, f.id"
            " ORDER BY 1, 2, 3, 4">},
    {"FOREIGNKEYS", &Query<"SELECT t.schema, t.name AS \"table\", f.id AS number, f.\"table\" AS \"referenced table\","
                           " f.on_update AS \"on update\", f.on_delete AS \"on delete\" FROM $tables AS t"
                           " CROSS JOIN pragma_foreign_key_list(t.name, t.schema) AS f WHERE f.seq = 0"
                           " ORDER BY t.schema, t.name, f.id">},
    {"TABLESTATISTICS",
     // The sign keeps the library from asking for each name by itself, which
     // would read the whole schema each time.
     &Query<"SELECT d.name AS \"table\", d.pageno AS pages, d.pgsize AS bytes, d.payload AS \"bytes of data\","
            " d.unused AS \"bytes unused\" FROM dbstat AS d WHERE d.aggregate = true"
            " AND +d.name IN (SELECT name FROM main.sqlite_schema WHERE type = 'table') ORDER BY d.name">},
};

bool IsName(const std::string& sName, const char* sOther) { return sqlite3_stricmp(sName.c_str(), sOther) == 0; }

}  // namespace

SystemView::ReaderFactory SystemTable::Find(const std::string& sName) {
  for (const Own& oOwn : kOwn) {
    if (IsName(sName, oOwn.Table)) return oOwn.MakeReader;
  }
  for (const Same& oSame : kSame) {
    if (!IsName(sName, oSame.Table)) continue;
    for (const SystemView& oView : SystemView::All()) {
      if (IsName(oSame.View, oView.Name)) return oView.MakeReader;
    }
  }
  return nullptr;
}

}  // namespace ZELWbr3::SQLite
