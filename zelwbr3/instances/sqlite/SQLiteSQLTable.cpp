#include "zelwbr3/instances/sqlite/SQLiteSQLTable.h"

#include "zelwbr3/instances/sqlite/KeyedFeed.h"
#include "zelwbr3/instances/sqlite/QueryFeed.h"
#include "zelwbr3/instances/sqlite/SystemTable.h"

#include <sqlite3.h>

namespace ZELWbr3::SQLite {

std::unique_ptr<RowFeed> SQLiteSQLTable::MakeFeed(Connection& oConnection) {
  if (Owner() == SystemTable::Owner) {
    if (const auto fnMakeFeed = SystemTable::Find(Name())) return fnMakeFeed(oConnection);
    RaiseError(SQLITE_ERROR, File().Path(),
               Owner() + "." + Name() + ": a SQLite database has nothing like this system table");
  }
  const std::string sFrom = (Owner().empty() ? "" : QuoteIdentifier(Owner()) + ".") + QuoteIdentifier(Name());
  const TableKey oKey = TableKey::Of(oConnection, Owner(), Name());
  if (!oKey.Columns.empty()) return std::make_unique<KeyedFeed>(oConnection, sFrom, oKey);
  return std::make_unique<QueryFeed>(oConnection, "SELECT * FROM " + sFrom, "reading " + sFrom);
}

}  // namespace ZELWbr3::SQLite
