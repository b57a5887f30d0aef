#include "host/OpenServer.h"

#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

namespace ZELWbr3::Host {

std::shared_ptr<ZELLib3::Database> OpenServer(const std::string& sAddress, Recorded::CallObserver) {
  Postgres::Options oOptions;
  oOptions.Observations = std::make_shared<SQLite::StateStore>("");
  return Postgres::OpenDatabase(sAddress, oOptions);
}

}  // namespace ZELWbr3::Host
