#pragma once

#include "zelwbr3/instances/sqlite/rows/SystemView.h"

#include <string>

namespace ZELWbr3::SQLite {

/// What a table of the system tables page is in a database file: a query on its
/// schema and on pragmas.
struct SystemTable {
  /// Whose name these tables are opened with.
  static constexpr const char* Owner = "SYSDD";

  /// Null for a table that a database file has no counterpart of (users, procedures,
  /// …). Case does not matter.
  static SystemView::ReaderFactory Find(const std::string& sName);
};

}  // namespace ZELWbr3::SQLite
