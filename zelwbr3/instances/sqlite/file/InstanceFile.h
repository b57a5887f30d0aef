#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/sqlite/file/Connection.h"
#include "zelwbr3/instances/sqlite/file/Reading.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3::SQLite {

/// A database file as an instance: its operational state, and the connection
/// that belongs to the state. The objects that an instance hands out share it.
///
/// A connection that is no longer current (the file was replaced, or came back
/// after it had vanished) is renewed by the next read.
class InstanceFile {
 public:
  /// What the user switches.
  enum class State { Offline, Admin, Online };
  /// Opens the file and reads it once. Raises ZELLib3::InstanceError when it is
  /// not an existing, readable database.
  InstanceFile(const std::string& sPath, const SQLite::Options& oOptions);

  /// Absolute.
  const std::string& Path() const { return m_sPath; }
  /// A file that the library keeps beside the database, such as "-wal".
  std::string PathBeside(const std::string& sEnding) const;
  /// What stands at the moment, or did within the reading's lifetime. Raises
  /// ZELLib3::InstanceError when the file is open but damaged.
  std::shared_ptr<const Reading> Read();
  /// The connection of the present state, at the beginning of a reading; null
  /// when there is none.
  Connection* Current();
  bool Connected();
  /// Offline closes the file. When the change fails the state stays, and
  /// LastError says why.
  bool Change(State eState);
  /// Answers false, for an operation that cannot be. lCode is one of the
  /// library's, 0 = its general error.
  bool Refuse(const std::string& sWhy, int lCode = 0);
  /// What another thread reads at the moment ends, with an error.
  void Interrupt() { m_bInterrupted = true; }
  /// Runs the parts of a reading that may take long from now on; empty = they run
  /// where they are asked for.
  void WaitRunner(ZELLib3::Database::Runner fnRun) { m_fnRun = std::move(fnRun); }
  /// Runs such a part. A connection obtained before is not to be used after it:
  /// meanwhile the program goes on, and may have renewed it.
  void Run(const std::function<void()>& oPart) const;
  /// Calls an operation with the present connection. False, and LastError says
  /// why, without a connection or when the operation raises InstanceError.
  bool Attempt(const std::function<void(Connection&)>& oOperation);
  /// False, and LastError says why, when a look at the file failed. A file that
  /// the user has closed or reserved can be looked at.
  bool Refresh();
  /// False, and LastError says why, unless figures can be read.
  bool RefreshFigures();

  const ZELLib3::Error& LastError() const { return m_oLastError; }
  void LastError(const ZELLib3::Error& oError) { m_oLastError = oError; }
  const SQLite::Options& Options() const { return m_oOptions; }
  /// When the present connection was opened.
  ZELLib3::Date OpenedOn() const { return m_dOpenedOn; }
  /// Empty unless figures can be read.
  std::string JournalMode();
  /// Bytes; the last known while the file is closed.
  int PageSize();
  /// The same of the pages in which figures are counted, see Usage.
  int Unit() { return Usage::UnitOf(PageSize()); }

 private:
  void Open(State eState);
  void Recover();
  void Close();
  Reading Look();
  Reading LookInside(Connection& oConnection);

  std::string m_sPath;
  SQLite::Options m_oOptions;
  State m_eState = State::Online;
  ZELLib3::Database::Runner m_fnRun;
  std::atomic<bool> m_bInterrupted = false;  ///< outlives the connection
  std::unique_ptr<Connection> m_oConnection;
  std::shared_ptr<const Reading> m_oReading;
  std::chrono::steady_clock::time_point m_dReadingEnds;
  bool m_bLocked = false;  ///< the last read found the file locked
  int m_iPageSize = 0;
  ZELLib3::Date m_dOpenedOn;
  ZELLib3::Error m_oLastError{};
};

}  // namespace ZELWbr3::SQLite
