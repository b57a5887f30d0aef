#pragma once

#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

class Connection;

/// A name as an identifier in a statement, whatever characters it holds.
std::string QuoteIdentifier(const std::string& sName);

/// The key in whose order a table is stored: reading can continue after
/// any of its values without stepping over what comes before.
struct TableKey {
  std::vector<std::string> Columns;  ///< as they stand in a statement
  bool Descending = false;

  /// The rowid, or the primary key of a table without one. No columns for what
  /// has no such key (a view, a virtual table, a table whose columns hide the
  /// rowid, a primary key in mixed order). sSchema is empty for a name that is
  /// looked up as in a statement. Raises ZELLib3::InstanceError.
  static TableKey Of(Connection& oConnection, const std::string& sSchema, const std::string& sTable);

  /// "a", "b".
  std::string List() const;
  /// What the rows are sorted by.
  std::string Order() const;
};

}  // namespace ZELWbr3::SQLite
