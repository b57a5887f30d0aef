#include "zelwbr3/instances/postgres/PostgresSQLTables.h"

#include "zelwbr3/instances/postgres/rows/Relation.h"
#include "zelwbr3/instances/postgres/rows/SystemTable.h"

namespace ZELWbr3::Postgres {

std::unique_ptr<RowReader> PostgresSQLTable::MakeReader(Connection& oConnection) {
  const std::string& sServer = Source().Name();
  const Rights& oRights = Source().Rights();
  if (Owner() == SystemTable::Owner) return SystemTable::MakeReader(oConnection, sServer, oRights, Name());
  return Relation::Of(oConnection, sServer, Owner(), Name()).MakeReader(oConnection, sServer, oRights);
}

}  // namespace ZELWbr3::Postgres
