#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// What the server writes about itself into postmaster.pid while it runs.
struct PostmasterFile {
  int Process = 0;
  std::string DataDirectory;
  std::time_t Started = 0;
  int Port = 0;
  std::string SocketFolder;   ///< the first one; empty without sockets
  std::string ListenAddress;  ///< the first one; empty without TCP
  /// "starting", "stopping", "ready", also for reading only, or "standby" when it
  /// takes no connections; empty at the very beginning.
  std::string Status;
};

/// Room on a file system.
struct FileSystem {
  std::string Folder;          ///< the first of the folders that lie on it
  std::int64_t BytesLeft = 0;  ///< for users other than root
};

/// The file systems that folders lie on, each once, in their order. Folders that
/// this user cannot reach are left out; their own mode makes no difference.
std::vector<FileSystem> FileSystemsOf(const std::vector<std::string>& folders);

/// A server on this machine, looked at from outside: by its data directory and
/// by /proc, whether it runs or not. Each member looks afresh and none raises:
/// what this user may not look at is not known.
class LocalServer {
 public:
  /// The folder need not exist.
  explicit LocalServer(std::string sDataDirectory) : m_sDataDirectory(std::move(sDataDirectory)) {}

  /// Whether the server of a connection runs on this machine, in what this
  /// process sees of it: there is a process of the backend's number, its name is
  /// postgres and it started within 2 seconds of tBackendStart. Every user may
  /// ask. A loopback address would say the same of a container's server.
  static bool RunsHere(int lBackendProcess, std::time_t tBackendStart);

  /// $PGDATA, when the server there uses iPort by its postmaster.pid, its last
  /// command line or its configuration; empty otherwise.
  static std::string FromEnvironment(int iPort);

  const std::string& DataDirectory() const { return m_sDataDirectory; }
  std::string WalDirectory() const { return m_sDataDirectory + "/pg_wal"; }
  /// This user can look into the data directory, and it is one.
  bool IsReadable() const;
  /// This process runs as the data directory's owner, who alone may start and
  /// stop the server.
  bool IsOwner() const;
  /// The owner's name; empty when it is not known.
  std::string Owner() const;

  /// No value without the file, or when it cannot be read.
  std::optional<PostmasterFile> Postmaster() const;
  /// The server's first process, when it runs: the one postmaster.pid names,
  /// unless it has ended and its parent has not noticed yet, or another program
  /// got its number.
  std::optional<int> Process() const;

  /// The file that its output goes to, while it runs; empty when it is none, or
  /// another user's.
  std::string OutputFile() const;
  /// What its processes say they do, while it runs: changes when a recovery gets
  /// on.
  std::string Activity() const;
  /// Patroni looks after it: one is among the processes above the server, or it
  /// keeps a file here and runs.
  bool IsUnderPatroni() const;

  /// The server's program and the options of its last start, without -D, which
  /// may be relative, and without those of a recovery. The program is the first.
  /// Empty when postmaster.opts cannot be read.
  std::vector<std::string> LastCommand() const;
  /// Where another of the server's programs is: beside the server's. Empty when
  /// that is not known.
  std::string Program(const std::string& sName) const;

  /// A line of pg_controldata, such as "Database cluster state": "in
  /// production", "shut down", … Empty unless IsOwner. Takes some milliseconds.
  std::string ControlData(const std::string& sName) const;

 private:
  std::string Read(const std::string& sFile) const;

  std::string m_sDataDirectory;
};

}  // namespace ZELWbr3::Postgres
