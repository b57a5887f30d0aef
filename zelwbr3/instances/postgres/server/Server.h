#pragma once

#include "zelwbr3/instances/postgres/connection/Connection.h"
#include "zelwbr3/instances/postgres/connection/Queries.h"
#include "zelwbr3/instances/postgres/connection/Rights.h"
#include "zelwbr3/instances/postgres/local/LocalServer.h"
#include "zelwbr3/instances/postgres/server/Options.h"
#include "zelwbr3/instances/postgres/server/Reading.h"

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ZELWbr3::Postgres {

/// A server as an instance: its state and the one connection to it. The objects
/// that an instance hands out share it.
///
/// Nothing stays open on the server between two readings: no transaction, no
/// snapshot, no lock. A connection that has ended is replaced by the next read.
class Server {
 public:
  /// Raises ZELLib3::InstanceError when nothing at all is known about the server.
  Server(std::string_view sAddress, const Postgres::Options& oOptions);

  /// The address as given, without the password.
  const std::string& Name() const { return m_oAddress.Shown(); }
  const Postgres::Address& Address() const { return m_oAddress; }
  const Postgres::Options& Options() const { return m_oOptions; }

  /// What stands at the moment, or did within the reading's lifetime.
  std::shared_ptr<const Reading> Read();
  /// The figures; null when there are none at the moment.
  std::shared_ptr<const Figures> ReadFigures() { return Read()->Figures; }
  bool Connected() { return Read()->IsConnected; }

  /// Runs a reading with the connection, and once more with a new one if that was
  /// lost. Raises ZELLib3::InstanceError also when there is no connection.
  void Use(const std::function<void(Connection&)>& oReading);
  /// The rows of a query of Queries; no value if this server and user cannot run
  /// it. Raises as Use.
  std::optional<Result> Ask(std::string_view sQuery, const std::string& sAsked,
                            const Connection::Parameters& parameters = {});
  /// Runs an operation as Use, but never twice. False, and LastError says why, when
  /// it raises.
  bool Operate(const std::function<void(Connection&)>& oOperation);
  /// The next use connects even if that has just failed.
  void TryAgain() { m_oFailure = nullptr; }
  /// Runs a reading as Use. False, and LastError says why, when it raises.
  bool Attempt(const std::function<void(Connection&)>& oReading);
  /// False, and LastError says why, unless figures can be read.
  bool RefreshFigures();
  /// False, and LastError says why, without a connection.
  bool Refresh();
  /// Answers false, for an operation that cannot be.
  bool Refuse(const std::string& sWhy);

  /// Of the present connection; that of the last one while there is none.
  const Postgres::Rights& Rights() const { return m_oRights; }
  /// The name it is configured with, otherwise its host, or this machine's name.
  std::string InstanceName() const;
  /// What it is remembered under: a standby's differs from its primary's.
  std::string Key() const;
  /// The server's files; null when it runs on another machine, or nobody has told
  /// where they are.
  const LocalServer* Local() const { return m_oLocal ? &*m_oLocal : nullptr; }
  /// Empty when it is not known.
  std::string DataDirectory() const { return m_oLocal ? m_oLocal->DataDirectory() : m_oRights.DataDirectory; }
  /// The room of the file system that a folder of the server lies on; no value when
  /// that is another machine's.
  std::optional<FileSystem> RoomAt(const std::string& sFolder) const;
  /// Bytes of a page; the last known.
  int PageSize() const { return m_oRights.PageSize == 0 ? 8192 : m_oRights.PageSize; }
  /// Rounded up; as many as a Long can count.
  ZELLib3::Long Pages(std::int64_t lBytes) const;

  /// The present connection is closed, and what was read is forgotten.
  void Disconnect();
  void Interrupt() { m_oWaiter.Interrupt(); }
  Postgres::Waiter& Waiter() { return m_oWaiter; }

  const ZELLib3::Error& LastError() const { return m_oLastError; }
  void LastError(const ZELLib3::Error& oError) { m_oLastError = oError; }

 private:
  Connection& Current();
  void Connect();
  void FindFiles(const Connection& oConnection);
  std::string RememberedDirectory() const;
  void AddRoom(Figures& oFigures, Connection& oConnection) const;
  Reading Look();
  bool Try(const std::function<void()>& oWork);

  Postgres::Address m_oAddress;
  Postgres::Options m_oOptions;
  Postgres::Waiter m_oWaiter;
  std::unique_ptr<Connection> m_oConnection;
  std::optional<LocalServer> m_oLocal;
  Postgres::Rights m_oRights;
  DatabaseSizes m_oSizes;
  std::shared_ptr<const Reading> m_oReading;
  std::chrono::steady_clock::time_point m_dReadingEnds;
  std::chrono::steady_clock::time_point m_dUsed;  ///< when the connection was last used
  /// Why the last attempt to connect failed, for as long as it took.
  std::exception_ptr m_oFailure;
  std::chrono::steady_clock::time_point m_dFailureEnds;
  ZELLib3::Error m_oLastError{};
};

}  // namespace ZELWbr3::Postgres
