#include "host/OpenServer.h"

#include "host/WatchedDatabase.h"
#include "zelwbr3/instances/postgres/AnalyzedServer.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

namespace ZELWbr3::Host {

namespace {

Postgres::Options Remembering() {
  Postgres::Options oOptions;
  oOptions.Observations = std::make_shared<SQLite::StateStore>("");
  return oOptions;
}

}  // namespace

std::shared_ptr<ZELLib3::Database> OpenServer(const std::string& sAddress, Recorded::CallObserver oObserver) {
  if (oObserver == nullptr) return Postgres::OpenDatabase(sAddress, Remembering());
  return std::make_shared<WatchedDatabase<Postgres::PostgresDatabase>>(std::move(oObserver), sAddress, Remembering());
}

Instances::EvaluatedInstance EvaluatedServer(const std::string& sAddress) {
  return Postgres::AnalyzedServer(sAddress, Remembering());
}

}  // namespace ZELWbr3::Host
