#include "zelwbr3/instances/sqlite/SQLiteSQLTable.h"

#include "zelwbr3/instances/sqlite/rows/CursorReader.h"
#include "zelwbr3/instances/sqlite/rows/KeysetReader.h"
#include "zelwbr3/instances/sqlite/rows/SystemTable.h"

#include <sqlite3.h>

namespace ZELWbr3::SQLite {

std::unique_ptr<RowReader> SQLiteSQLTable::MakeReader(Connection& oConnection) {
  if (Owner() == SystemTable::Owner) {
    if (const auto fnMakeReader = SystemTable::Find(Name())) return fnMakeReader(oConnection);
    RaiseError(SQLITE_ERROR, Source().Path(), Owner() + "." + Name() + ": a SQLite database has no such system table");
  }
  const std::string sFrom = (Owner().empty() ? "" : QuoteIdentifier(Owner()) + ".") + QuoteIdentifier(Name());
  TableKey oKey = TableKey::Of(oConnection, Owner(), Name());
  if (!oKey.Columns.empty()) return std::make_unique<KeysetReader>(oConnection, std::move(oKey));
  return std::make_unique<CursorReader>(oConnection, "SELECT * FROM " + sFrom, "reading " + sFrom);
}

}  // namespace ZELWbr3::SQLite
