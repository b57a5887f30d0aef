#pragma once

#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Real PostgreSQL servers for tests, and connections to them without the code
/// under test.
///
/// They listen on sockets in one temporary folder only and belong to the user
/// who runs the tests, or to user 65534 when that is root, whom PostgreSQL
/// refuses. All are stopped and gone when the test program ends, however it ends.
/// The first one made costs about 2 seconds, each further one 0.2.
namespace PostgresServers {

/// Where the server's programs are: $ZELWBR3_POSTGRES_BIN, otherwise what
/// pg_config says.
std::string Program(const std::string& sName);

/// A folder below the temporary one that the servers' owner may write.
std::string MakeFolder();

/// Runs the body as the servers' owner: in a process of its own when that is
/// another user. Its failures are failures of the test.
void AsOwner(const std::function<void()>& oBody);

/// Runs a program to its end as the servers' owner, and answers what it wrote to
/// both outputs. Raises std::runtime_error with that when it fails.
std::string RunAsOwner(const std::vector<std::string>& arguments);

/// Asks again and again until it is so; the test fails after 30 seconds.
void Await(const std::function<bool()>& oIsTrue, const std::string& sWhat);

/// A connection as any application has one. Raises std::runtime_error with the
/// server's words.
class Client {
 public:
  explicit Client(const std::string& sAddress);

  void Run(const std::string& sSQL) { Ask(sSQL); }
  /// The first value of the first row; empty without a row, or for NULL.
  std::string Text(const std::string& sSQL);
  long long Number(const std::string& sSQL) { return std::stoll(Text(sSQL)); }
  /// The server's words when it fails, otherwise empty.
  std::string Try(const std::string& sSQL);
  /// Sends it and does not wait: for what has to wait for another session.
  void Send(const std::string& sSQL);
  /// The process at the server.
  int Process() const { return PQbackendPID(m_oHandle.get()); }
  /// Asks for nothing: whether the server has ended the connection.
  bool IsOpen();

 private:
  struct Closer {
    void operator()(PGconn* pHandle) const { PQfinish(pHandle); }
  };
  using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;
  Result Ask(const std::string& sSQL);

  std::unique_ptr<PGconn, Closer> m_oHandle;
};

/// A server of its own: user postgres (superuser), monitor (member of pg_monitor)
/// and ordinary, no password asked for, segments of 1 MB, no fsync.
class Server {
 public:
  /// A fresh one that runs; sSettings are lines of postgresql.conf. %ARCHIVE in
  /// them is the folder of Archive().
  explicit Server(const std::string& sSettings = {});
  /// A standby of oPrimary that runs and streams, fed through a slot "standby".
  static std::unique_ptr<Server> StandbyOf(Server& oPrimary);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// "postgresql://USER@/DATABASE?host=FOLDER&port=NUMBER".
  std::string Address(const std::string& sUser = "postgres", const std::string& sDatabase = "postgres") const;
  const std::string& DataDirectory() const { return m_sData; }
  /// For archive_command: exists, empty at the beginning.
  std::string Archive() const { return m_sFolder + "/archive"; }
  /// Where the socket is.
  const std::string& Folder() const { return m_sFolder; }
  int Port() const { return m_iPort; }
  /// What the server logs.
  std::string Log() const;
  /// The first process, by postmaster.pid; 0 when there is no such file.
  int Process() const;

  /// Adds a line to postgresql.conf; takes effect at the next start or Reload.
  void Configure(const std::string& sLine) const;
  void Reload() const;
  /// Returns when it answers. Options are those of the program postgres.
  void Start(const std::vector<std::string>& options = {});
  /// Does not wait until it answers.
  void Launch(const std::vector<std::string>& options = {});
  /// Fast; returns when it has ended, whoever started it.
  void Stop();
  /// As a crash: the process is killed and nobody tidies up.
  void Kill();

 private:
  Server(const std::string& sFolder, int iPort);
  void End(int iSignal);
  void Reap();

  std::string m_sFolder;
  std::string m_sData;
  int m_iPort;
  pid_t m_iChild = 0;
};

/// The one that tests share which leave it as it was; archives nothing.
Server& Primary();
/// The standby of Primary.
Server& Standby();

}  // namespace PostgresServers
