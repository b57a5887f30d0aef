#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/postgres/server/Options.h"

#include <memory>
#include <string>
#include <string_view>

namespace ZELWbr3::Postgres {

class Server;
class ServerParameters;

/// A PostgreSQL server, 10 and later, as an instance: the whole server, and of what
/// only exists in a database, that of the one the address names.
///
/// Reading changes nothing and keeps nothing open on the server: one connection,
/// no transaction, no snapshot, no lock. Each statement waits at most 250 ms for a
/// lock and ends after 10 s. The objects that it hands out may outlive it.
class PostgresDatabase : public ZELLib3::Database {
 public:
  /// sAddress is in libpq's words. Raises ZELLib3::InstanceError, with one line that
  /// names the server and what is wrong, when it cannot be reached and nothing is
  /// known about it; PasswordNeeded when only a password is missing. A server that
  /// is stopped, starts or stops opens and says so in its state.
  explicit PostgresDatabase(std::string_view sAddress, const Options& oOptions = {});

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override;
  std::shared_ptr<ZELLib3::Parameters> Parameters() override;
  std::shared_ptr<ZELLib3::LogSettings> LogSettings() override;
  std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() override;
  std::shared_ptr<ZELLib3::Caches> Caches() override;
  std::shared_ptr<ZELLib3::Activity> Activity() override;
  std::shared_ptr<ZELLib3::DataArea> DataArea() override;
  std::shared_ptr<ZELLib3::LogArea> LogArea() override;
  std::shared_ptr<ZELLib3::Sessions> Sessions() override;
  std::shared_ptr<ZELLib3::HotStandby> HotStandby() override;
  /// The code is the SQLSTATE as a base-36 number, 0 without one.
  ZELLib3::Error LastError() override;
  /// cluster_name, otherwise the host.
  std::string InstanceName() override;
  /// The server's port.
  ZELLib3::Long InstanceNumber() override;
  std::shared_ptr<ZELLib3::Version> Version() override;
  /// Of the server's machine as far as the server tells it.
  std::string OSVersion() override;
  std::string OSName() override;
  bool Connected() override;
  ZELLib3::Long PageSize() override;
  /// The data directory; empty without the right to know it.
  std::string RunDirectory() override;
  ZELLib3::Long HotStandbyRole() override;
  bool HotStandbyWarning() override;

  void Interrupt() override;
  void WaitRunner(Runner oRunner) override;

 private:
  std::shared_ptr<Server> m_oServer;
  std::shared_ptr<ServerParameters> m_oParameters;
};

/// Opens a server; the errors are those of PostgresDatabase.
std::shared_ptr<ZELLib3::Database> OpenDatabase(std::string_view sAddress, const Options& oOptions = {});

}  // namespace ZELWbr3::Postgres
