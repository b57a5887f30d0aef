#pragma once

#include "zelwbr3/instances/sqlite/rows/CursorReader.h"

#include <algorithm>
#include <memory>
#include <string>

namespace ZELWbr3::SQLite {

/// The queries on the schema and on pragmas from which system views and system
/// tables are filled. All raise ZELLib3::InstanceError.
///
/// Pragmas are joined by CROSS JOIN, which keeps the order: the library may
/// otherwise call one before it knows both of its arguments, and finds nothing
/// then. The tables come from the schema: pragma_table_list prepares every view
/// first, however long that takes, and again for each that is broken.
namespace SystemQueries {

using Reader = std::unique_ptr<RowReader>;

template <std::size_t N>
struct Literal {
  constexpr Literal(const char (&sText)[N]) { std::copy_n(sText, N, Text); }
  char Text[N];
};

/// The rows of a query; "$tables" stands for the tables, without views and
/// virtual tables: their schema and name.
Reader Query(Connection& oConnection, std::string sSQL);
/// Of one that is the same for every file.
template <Literal SQL>
Reader Query(Connection& oConnection) {
  return Query(oConnection, SQL.Text);
}

/// The schema entries of every database, the temporary one included, with the
/// database's name as their first column.
Reader Schema(Connection& oConnection, const std::string& sColumns, const std::string& sWhere);

/// The rows of a table of the main database that the library makes when it
/// needs it; without the table there are none. oColumns: the column's name in
/// the table, and the heading.
Reader Optional(Connection& oConnection, const std::string& sTable,
                const std::vector<std::pair<std::string, std::string>>& oColumns);

}  // namespace SystemQueries

}  // namespace ZELWbr3::SQLite
