#pragma once

#include "zelwbr3/instances/common/CountedActivity.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>

namespace ZELWbr3::Postgres {

/// What the server has counted. Its counters go on over a clean restart and begin
/// anew after a crash or a reset. Statements by their kind come from
/// pg_stat_statements, as far as it keeps them; scans are those of the tables of
/// this database; rows and transactions are those of all databases.
class PostgresActivity : public Instances::CountedActivity {
 public:
  explicit PostgresActivity(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  bool Refresh() override;

 private:
  Values Read() const override;
  void ReadStatements(Values& oValues) const;

  std::shared_ptr<Server> m_oServer;
};

}  // namespace ZELWbr3::Postgres
