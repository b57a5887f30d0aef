#pragma once

#include "zelwbr3/ZELLib3/SQLTable.h"
#include "zelwbr3/instances/sqlite/rows/RowSourceOf.h"

namespace ZELWbr3::SQLite {

/// The rows of a table or view, in the order of the table's key where it has
/// one. The owner is the name of a database (main, temp, an attached one), or
/// empty for a name that is looked up as in a statement. Owned by SYSDD are the
/// system tables, as far as a database file has the like.
class SQLiteSQLTable : public RowSourceOf<ZELLib3::SQLTable> {
 public:
  using RowSourceOf::RowSourceOf;

 protected:
  std::unique_ptr<RowReader> MakeReader(Connection& oConnection) override;
};

}  // namespace ZELWbr3::SQLite
