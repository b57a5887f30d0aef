#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/postgres/OpenDatabase.h"
#include "zelwbr3/instances/postgres/server/Options.h"

#include <memory>
#include <string>
#include <string_view>

namespace ZELWbr3::Postgres {

class Operations;
class Server;
class ServerParameters;

/// A PostgreSQL server, 10 and later, as an instance: the whole server, and of what
/// only exists in a database, that of the one the address names.
///
/// Reading changes nothing and keeps nothing open on the server: one connection,
/// no transaction, no snapshot, no lock. Each statement waits at most 250 ms for a
/// lock and ends after 10 s. The objects that it hands out may outlive it.
class ZELWBR3_EXPORT PostgresDatabase : public ZELLib3::Database {
 public:
  /// sAddress is in libpq's words. Raises ZELLib3::InstanceError, with one line that
  /// names the server and what is wrong, when it cannot be reached and nothing is
  /// known about it; PasswordNeeded when only a password is missing. A server that
  /// is stopped, starts or stops opens and says so in its state.
  explicit PostgresDatabase(std::string_view sAddress, const Options& oOptions = {});
  /// Of a server that is open already.
  explicit PostgresDatabase(std::shared_ptr<Server> oServer);

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override;
  std::shared_ptr<ZELLib3::Parameters> Parameters() override;
  std::shared_ptr<ZELLib3::LogSettings> LogSettings() override;
  std::shared_ptr<ZELLib3::SysInfos> SysInfos() override;
  std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() override;
  std::shared_ptr<ZELLib3::Caches> Caches() override;
  std::shared_ptr<ZELLib3::Activity> Activity() override;
  std::shared_ptr<ZELLib3::SQLTables> SQLTables() override;
  std::shared_ptr<ZELLib3::DataArea> DataArea() override;
  std::shared_ptr<ZELLib3::LogArea> LogArea() override;
  std::shared_ptr<ZELLib3::Sessions> Sessions() override;
  std::shared_ptr<ZELLib3::HotStandby> HotStandby() override;
  /// Backups of pgBackRest, base backups, those that the host has registered, and
  /// how the archiver is getting on.
  std::shared_ptr<ZELLib3::History> History() override;
  /// Runs in the background, whether or not this program does.
  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override;
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

  /// Sessions that wait for locks, transactions that are open for long, an archive
  /// that fails, and slots that keep too much of the log.
  std::vector<ZELLib3::Trouble> Troubles() override;

  void Interrupt() override;
  void WaitRunner(Runner oRunner) override;

  /// The operations need a superuser and a server that is no standby; all but Admin
  /// also the owner of the data directory, on the server's machine. LastError says
  /// what is missing.
  ///
  /// Waits until no transaction is open, at most twice Options::Patience; who is
  /// no superuser cannot log in meanwhile.
  bool Shutdown() override;
  /// Rolls open transactions back.
  bool ShutdownQuick() override;
  /// Lets only superusers in, on the standbys, too; a server that is stopped is
  /// started for that. Ends idle sessions; fails when
  /// others have not ended after Options::Patience.
  bool Admin() override;
  /// Gives every database the connection limit back that it had before Admin. A
  /// server that is stopped is started as it was started last, which is outside of
  /// what a service manager looks after.
  bool Online() override;
  /// Restores the newest backup that ended before dUntil, beside the present data
  /// directory, and replays the log up to then. The present one stays, and the
  /// history names it. Standbys have to be built anew.
  bool RestartUntil(const ZELLib3::Date& dUntil) override;
  /// Nothing is switched off: the archiver ends and starts with the server. True
  /// when Shutdown can be done.
  bool AutoLogOff() override;

  /// Adds a backup that the host has made to the history: a directory as
  /// pg_basebackup makes it, which RestartUntil can begin with if sRestoreCommand
  /// fetches the log (see PostgreSQL's setting restore_command), or any other file,
  /// also where this program cannot look. dCompleted is local time. False, and
  /// LastError says why, without a name or a date, or when it cannot be written
  /// down.
  bool RegisterBackup(const std::string& sPath, const ZELLib3::Date& dCompleted, const std::string& sLabel,
                      const std::string& sRestoreCommand = {});

 private:
  std::shared_ptr<Server> m_oServer;
  std::shared_ptr<ServerParameters> m_oParameters;
  std::shared_ptr<Operations> m_oOperations;
};

}  // namespace ZELWbr3::Postgres
