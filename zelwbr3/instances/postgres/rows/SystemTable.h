#pragma once

#include "zelwbr3/instances/postgres/connection/Rights.h"
#include "zelwbr3/instances/postgres/rows/RowReader.h"

#include <memory>
#include <string>

namespace ZELWbr3::Postgres {

/// What a table of the system tables page is on a server: a query on its catalogs.
struct SystemTable {
  /// Whose name these tables are opened with.
  static constexpr const char* Owner = "SYSDD";

  /// Case does not matter. Raises ServerError that says why there is no such table.
  static std::unique_ptr<RowReader> MakeReader(Connection& oConnection, const std::string& sServer,
                                               const Rights& oRights, const std::string& sName);
};

}  // namespace ZELWbr3::Postgres
