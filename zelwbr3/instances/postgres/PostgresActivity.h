#pragma once

#include "zelwbr3/ZELLib3/Activity.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <array>
#include <memory>
#include <optional>

namespace ZELWbr3::Postgres {

/// What the server has counted. Its counters go on over a clean restart and begin
/// anew after a crash or a reset. Statements by their kind come from
/// pg_stat_statements, as far as it keeps them; scans are those of the tables of
/// this database; rows and transactions are those of all databases.
class PostgresActivity : public ZELLib3::Activity {
 public:
  explicit PostgresActivity(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  double SQLCounter(ZELLib3::Long iIndex) const override { return At(Read().SQL, iIndex); }
  double IOCounter(ZELLib3::Long iIndex) const override { return At(Read().IO, iIndex); }
  double LockCounter(ZELLib3::Long iIndex) const override { return At(Read().Lock, iIndex); }
  double LogCounter(ZELLib3::Long iIndex) const override { return At(Read().Log, iIndex); }
  bool Refresh() override;

 private:
  struct Values {
    std::array<double, 25> SQL;
    std::array<double, 4> IO;
    std::array<double, 9> Lock;
    std::array<double, 4> Log;
  };

  template <std::size_t N>
  static double At(const std::array<double, N>& oCounters, std::int32_t iIndex) {
    return iIndex >= 0 && static_cast<std::size_t>(iIndex) < N ? oCounters[static_cast<std::size_t>(iIndex)] : -1;
  }
  const Values& Read() const;
  void ReadStatements(Values& oValues) const;

  std::shared_ptr<Server> m_oServer;
  mutable std::optional<Values> m_oValues;
};

}  // namespace ZELWbr3::Postgres
