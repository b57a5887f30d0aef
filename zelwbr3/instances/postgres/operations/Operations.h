#pragma once

#include "zelwbr3/instances/postgres/backups/Backup.h"
#include "zelwbr3/instances/postgres/local/ServerControl.h"
#include "zelwbr3/instances/postgres/operations/Admission.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <chrono>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ZELWbr3::Postgres {

/// The operations that change the state of a server. Each is refused with its
/// reason where it cannot be done, puts back what it has changed when it fails or
/// is interrupted, and is never repeated. False, and LastError says why, then.
///
/// All need a superuser on a server that is no standby; stopping and starting need
/// the owner of the data directory on the server's machine.
class Operations {
 public:
  explicit Operations(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  /// Lets only superusers in; starts the server first when it is stopped. Ends idle
  /// sessions and waits for the others, at most Options::Patience.
  bool Admin();
  /// Lets everybody in again; starts the server first when it is stopped.
  bool Online();
  /// Stops the server when nobody has a transaction open any more; waits at most
  /// twice Options::Patience for that.
  bool Shutdown();
  /// Stops it at once; open transactions are rolled back.
  bool ShutdownQuick();
  /// Changes nothing: the archiver ends with the server. Answers whether Shutdown
  /// could be done.
  bool AutoLogOff();
  /// Restarts with the newest complete backup that ended before dUntil and the log
  /// up to then. The old data directory stays, and the backup history names it.
  bool RestartUntil(const ZELLib3::Date& dUntil);

 private:
  bool Attempt(const std::function<void()>& oOperation);
  std::string Why(const std::exception& oError) const;
  /// As Server::Operate; raises instead of answering false, and when the operation
  /// has been interrupted before.
  void Run(const std::function<void(Connection&)>& oStep);
  void CheckUser();
  /// Raises when the server does not tell.
  bool IsAdmin();
  ServerControl& Control();
  void Stop();
  /// False when the server runs already.
  bool StartIfStopped();
  /// Runs an operation on a server that was stopped before it, if bStarted: stops
  /// it again when the operation raises.
  void OrStop(bool bStarted, const std::function<void()>& oOperation);
  void Start();

  using Sessions = std::string (Admission::*)();
  void CloseAndAwait(Sessions pSessions, std::chrono::milliseconds dPatience);
  void Reopen();
  /// Raises when the operation has been interrupted.
  void Pause(std::chrono::milliseconds dTime);

  void RestartUntil(std::time_t tUntil, const std::string& sUntil);
  Backup BackupBefore(std::time_t tUntil, const std::string& sUntil);

  std::shared_ptr<Server> m_oServer;
  std::optional<ServerControl> m_oControl;
};

}  // namespace ZELWbr3::Postgres
