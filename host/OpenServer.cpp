#include "host/OpenServer.h"

#include "host/OpenInstance.h"
#include "host/WatchedDatabase.h"
#include "zelwbr3/instances/postgres/AnalyzedServer.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/postgres/connection/ServerError.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

namespace ZELWbr3::Host {

namespace {

Postgres::Options Remembering(const std::string& sPassword = {}) {
  Postgres::Options oOptions;
  oOptions.Password = sPassword;
  oOptions.Observations = std::make_shared<SQLite::StateStore>("");
  return oOptions;
}

}  // namespace

std::shared_ptr<ZELLib3::Database> OpenServer(const std::string& sAddress, Recorded::CallObserver oObserver,
                                              const std::string& sPassword) {
  const Postgres::Options oOptions = Remembering(sPassword);
  try {
    if (oObserver == nullptr) return Postgres::OpenDatabase(sAddress, oOptions);
    return std::make_shared<WatchedDatabase<Postgres::PostgresDatabase>>(std::move(oObserver), sAddress, oOptions);
  } catch (const Postgres::PasswordNeeded& oError) {
    throw PasswordNeeded(oError.what());
  } catch (const Postgres::ServerError& oError) {
    if (oError.SQLState() == "28P01" && !sPassword.empty()) throw PasswordNeeded(oError.what());
    throw;
  }
}

Instances::EvaluatedInstance EvaluatedServer(const std::string& sAddress) {
  return Postgres::AnalyzedServer(sAddress, Remembering());
}

}  // namespace ZELWbr3::Host
