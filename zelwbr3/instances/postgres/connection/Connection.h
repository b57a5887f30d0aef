#pragma once

#include "zelwbr3/instances/postgres/connection/Address.h"
#include "zelwbr3/instances/postgres/connection/Result.h"
#include "zelwbr3/instances/postgres/connection/ServerError.h"
#include "zelwbr3/instances/postgres/connection/Statement.h"
#include "zelwbr3/instances/postgres/connection/Waiter.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// One connection to a server, from which figures are read.
///
/// Its session is read-only, waits neither long for a lock nor for a statement,
/// and is ended by the server itself when nothing has been asked for ten minutes
/// (14 and later). Nothing stays open between two statements unless Transaction
/// says so. Failures raise ServerError; no text contains the password.
class Connection {
 public:
  using Parameters = std::vector<std::optional<std::string>>;

  /// How long connecting may take, to each of the hosts of an address, unless the
  /// address says so itself.
  static constexpr std::chrono::seconds ConnectTimeout{5};

  /// Connects; gives up a host that does not answer and goes on to the next one.
  /// Refuses a pooler in between, which would give what is set here to others.
  Connection(const Address& oAddress, Waiter& oWaiter, StatementObserver oSending = {});
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Runs one statement with parameters $1, $2, ... and returns its last row set.
  /// sAsked says in an error what it was for. Raises ConnectionLost when the
  /// connection has ended, NoAnswer when the task's time is up.
  Result Execute(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters = {});
  /// Statements without parameters in one go, separated by semicolons.
  void ExecuteAll(const std::string& sSQL, const std::string& sAsked);
  /// As Execute, but hands the rows over as they arrive: those before a failure
  /// have been seen when it raises. Each part has one row; the last one has none.
  /// When oTake answers false, nothing more is wanted, and the statement ends.
  using RowTaker = std::function<bool(const Result& oPart)>;
  void Stream(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters, const RowTaker& oTake);

  /// The connection has ended, or an answer was given up. It is to be replaced.
  bool IsLost() const;
  /// Number of the server process.
  int Process() const { return m_lProcess; }
  /// The server's version as a number: 15 is 150000, 15.3 150003.
  int Version() const { return PQserverVersion(m_oHandle.get()); }
  /// The host that answered; a folder for a socket.
  std::string Host() const { return PQhost(m_oHandle.get()); }
  /// The schemas in which a name without one is looked up, as a text of type
  /// name[]: those of the user, from before the session was set up.
  const std::string& SearchPath() const { return m_sSearchPath; }

  /// A read-only transaction that shows one moment, as long as the object lives.
  class Snapshot {
   public:
    Snapshot(Connection& oConnection, const std::string& sAsked);
    ~Snapshot();
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

   private:
    Connection& m_oConnection;
  };

  /// A statement that stays open, in a read-only transaction, to be read in parts:
  /// until the object's end, or anything else is asked of the connection.
  class Cursor {
   public:
    Cursor(Connection& oConnection, const std::string& sSQL, std::string sAsked);
    ~Cursor();
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    bool IsOpen() const { return m_pConnection != nullptr; }
    /// The next rows, as Stream. Fewer than asked for are the last ones.
    void Fetch(std::size_t lRows, const RowTaker& oTake);

   private:
    friend Connection;

    Connection* m_pConnection;
    std::string m_sAsked;
  };

  /// A transaction that changes what Connection's session must not: committed by
  /// Commit, taken back by the end of the object.
  class Change {
   public:
    Change(Connection& oConnection, const std::string& sAsked);
    ~Change();
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    void Commit();

   private:
    Connection& m_oConnection;
    std::string m_sAsked;
    bool m_bOpen = true;
  };

 private:
  using Handle = std::unique_ptr<PGconn, void (*)(PGconn*)>;

  void Connect(const Address::Settings& oSettings);
  void CheckDirect();
  void SetUpSession();
  void Send(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters = {});
  void SendRows(const std::string& sSQL, const std::string& sAsked, const Parameters& parameters = {});
  void Finish(const std::string& sAsked, const RowTaker& oTake);
  void EndCursor();
  void EndTransaction(const char* sCommand);
  void AwaitAnswer(const std::string& sAsked);
  bool HearsLastWords() const;
  bool HasAnswer();
  void GiveUp();
  [[noreturn]] void Raise(const PGresult* pResult, const std::string& sAsked) const;
  [[noreturn]] void RaiseLost(const std::string& sAsked, const std::string& sWhy) const;
  [[noreturn]] void RaiseNoAnswer(std::chrono::milliseconds dWaited) const;
  [[noreturn]] void RaiseInterrupted(const std::string& sAsked) const;
  [[noreturn]] void RaiseNotConnected() const;

  Address m_oAddress;
  Waiter& m_oWaiter;
  StatementObserver m_oSending;
  Handle m_oHandle;
  std::shared_ptr<PGcancel> m_oCancel;
  int m_lProcess = 0;
  std::string m_sSearchPath;
  Cursor* m_pCursor = nullptr;
  bool m_bGivenUp = false;
  Waiter::Clock::time_point m_dGivenUp;
};

}  // namespace ZELWbr3::Postgres
