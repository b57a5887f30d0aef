#pragma once

#include "zelwbr3/instances/postgres/connection/Connection.h"
#include "zelwbr3/instances/postgres/connection/Rights.h"
#include "zelwbr3/instances/postgres/rows/RowReader.h"

#include <memory>
#include <string>

namespace ZELWbr3::Postgres {

/// A table or view, as it is found by a name.
struct Relation {
  std::string Number;    ///< at the server
  std::string FullName;  ///< as it stands in a statement
  char Kind = 0;         ///< as pg_class.relkind
  bool HasChildren = false;
  /// A view or foreign table of somebody who is no superuser that reading would
  /// go through: it may run code of theirs.
  std::string ForeignCode;

  /// sSchema empty = where the user's own session would look. A name that does not
  /// exist as it is, is looked up in lower case. Raises ServerError.
  static Relation Of(Connection& oConnection, const std::string& sServer, const std::string& sSchema,
                     const std::string& sName);

  /// Reads it in the way that costs the least: by its key, by where the rows are
  /// stored, or as any query. Raises ServerError, also when oRights are those of a
  /// superuser, as whom no other user's code is run.
  std::unique_ptr<RowReader> MakeReader(Connection& oConnection, const std::string& sServer,
                                        const Rights& oRights) const;
};

}  // namespace ZELWbr3::Postgres
