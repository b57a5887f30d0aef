#pragma once

#include "zelwbr3/instances/postgres/local/LocalServer.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// Stops and starts a server of this machine, as its own programs do it. What
/// fails raises std::runtime_error with the reason, in the server's words where
/// there are any.
///
/// A server started here is no child of a service manager. Its output goes where
/// it went before, if this object has stopped it, otherwise into a log in the
/// user's state folder.
class ServerControl {
 public:
  /// Waits that long, or ends the operation by raising something.
  using Pause = std::function<void(std::chrono::milliseconds)>;

  ServerControl(LocalServer oServer, Pause oPause) : m_oServer(std::move(oServer)), m_oPause(std::move(oPause)) {}

  const LocalServer& Server() const { return m_oServer; }
  /// Why the server is not ours to stop and start; empty when it is.
  std::string WhyNot() const;

  /// Ends sessions and transactions; all that was committed is on the disk.
  /// Returns when the server has ended, after a minute at most. Nothing happens
  /// when none runs.
  void Stop();
  /// Starts the server with the options of its last start, those of a recovery
  /// left out. Returns when it takes connections. That may take any time while it
  /// recovers from a crash, but 10 minutes without progress are a failure; it is
  /// stopped then.
  void Start() { Start({}, {}); }
  /// The same with settings of a recovery, each "NAME=VALUE". Returns when that has
  /// ended and the server takes changes.
  void Recover(const std::vector<std::string>& settings) { Start(settings, "in production"); }

 private:
  void Control(const std::vector<std::string>& arguments, std::chrono::seconds dTimeout) const;
  std::string LogPath() const;
  void Start(const std::vector<std::string>& settings, const std::string& sClusterState);
  void AwaitReady(const std::string& sClusterState) const;

  LocalServer m_oServer;
  Pause m_oPause;
  std::string m_sLog;  ///< where the server's output went
};

}  // namespace ZELWbr3::Postgres
