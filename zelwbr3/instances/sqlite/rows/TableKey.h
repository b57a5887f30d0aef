#pragma once

#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

class Connection;

/// A name as an identifier in a statement, whatever characters it holds.
std::string QuoteIdentifier(const std::string& sName);

/// The schema table of a database as it stands in a statement.
std::string SchemaTableOf(const std::string& sSchema);

/// Raises ZELLib3::InstanceError.
bool IsWithoutRowid(Connection& oConnection, const std::string& sSchema, const std::string& sTable);

/// The key in whose order a table is stored: reading can continue after
/// any of its values without stepping over what comes before.
struct TableKey {
  std::vector<std::string> Columns;  ///< as they stand in a statement
  bool Descending = false;
  bool IsRowid = false;
  std::string Schema;
  std::string Table;

  /// The rowid, or the primary key of a table without one. No columns for what
  /// has no such key (a view, a virtual table, a table whose columns hide the
  /// rowid, a primary key in mixed order). sSchema is empty for a name that is
  /// looked up as in a statement. Raises ZELLib3::InstanceError.
  static TableKey Of(Connection& oConnection, const std::string& sSchema, const std::string& sTable);

  /// The table as it stands in a statement.
  std::string From() const;
  /// "a", "b".
  std::string List() const;
  /// What the rows are sorted by.
  std::string Order() const;
};

}  // namespace ZELWbr3::SQLite
