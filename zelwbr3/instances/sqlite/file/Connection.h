#pragma once

#include "zelwbr3/instances/sqlite/file/FileHeader.h"
#include "zelwbr3/instances/sqlite/file/FileId.h"
#include "zelwbr3/instances/sqlite/file/Handle.h"
#include "zelwbr3/instances/sqlite/file/Options.h"
#include "zelwbr3/instances/sqlite/file/Statement.h"
#include "zelwbr3/instances/sqlite/file/StatementCounter.h"
#include "zelwbr3/instances/sqlite/file/Watchdog.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

struct sqlite3_file;

namespace ZELWbr3::SQLite {

/// One open database file, from which figures are read and nothing is changed.
///
/// The journal mode stays as it is, no frame of the write-ahead log is copied
/// into the file, not even when the last connection ends, and a file that is
/// missing is not made. What a file in WAL mode needs beside it while it is
/// open is taken away again when this connection had to make it. Failures
/// raise ZELLib3::InstanceError.
class Connection {
 public:
  /// Bytes. A longer value fails before memory is allocated for it.
  static constexpr int LongestValue = 4 << 20;

  enum class Access {
    Figures,    ///< reads; others go on working
    Recovery,   ///< reads, and may first roll back what a crash left half done
    Exclusive,  ///< as Recovery, and locks every other connection out
  };

  /// sPath is absolute. A locked file can be opened, unless eAccess is Exclusive.
  /// A write-ahead log without its database is refused: the library would delete
  /// it. What is read ends as soon as bInterrupted is set, which outlives this
  /// object.
  Connection(const std::string& sPath, Access eAccess, const Options& oOptions, const std::atomic<bool>& bInterrupted);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// False when the file has been deleted or replaced, has another page size, has
  /// changed between WAL mode and a rollback journal, or has changed at all where
  /// it could only be opened as one that never changes. Such a connection is to
  /// be replaced.
  /// Raises ZELLib3::InstanceError when the file is no longer a database.
  bool IsCurrent() const;

  const FileId& File() const { return m_oFile; }
  bool UsesWal() const { return m_oHeader.UsesWal; }
  /// Opened without the right to write, which is also how a file is opened that
  /// needs no writing to be read.
  bool IsReadOnly() const;
  /// The write-ahead log is open; not for a file opened as unchanging, nor with
  /// exclusive access.
  bool SharesWal() const { return UsesWal() && !m_bUnchanging && m_eAccess != Access::Exclusive; }
  std::string WalPath() const;
  /// Bytes; SQLite's default for a file that is still empty.
  int PageSize() const { return m_iPageSize; }
  /// Raised to the pages the file has when it is larger.
  std::int64_t MaxPageCount();
  sqlite3* Handle() const { return m_oHandle.get(); }
  sqlite3_file* MainFile() const;

  /// How long a read waits for a lock; 0 = it fails at once.
  void BusyTimeout(std::chrono::milliseconds dTimeout);

  /// What the statements of this connection have done since it was opened.
  const StatementCounter& Counter() const { return m_oCounter; }
  /// The journal mode of a file in WAL mode; otherwise each connection chooses
  /// its own, and only this one's is known.
  std::string JournalMode();

  /// What is read from now on may take as long as the options say in all,
  /// preparing included.
  void BeginReading() { m_oWatchdog.Allow(m_oOptions.ReadingTimeout); }
  SQLite::Watchdog& Watchdog() { return m_oWatchdog; }

  /// sAsked stands in the error.
  Statement Prepare(const std::string& sSQL, const std::string& sAsked);
  /// A statement that stays open from one block of a list to the next; empty
  /// once it was ended.
  using Cursor = std::shared_ptr<std::optional<Statement>>;
  /// Keeps a statement open until its owner lets go of it or anything else is
  /// asked of the connection, which would otherwise be answered as of the
  /// moment when the statement began.
  Cursor KeepOpen(Statement oStatement);
  void EndCursor();
  /// A writer waits for the readers to leave. Only with a rollback journal;
  /// checked from time to time.
  bool IsAwaited();
  /// The first column of the first row; 0 without a row. sAsked stands in the
  /// error.
  std::int64_t Number(const std::string& sSQL, const std::string& sAsked);
  std::string Text(const std::string& sSQL, const std::string& sAsked);

 private:
  void Open();
  void Configure();
  void LockOthersOut();
  bool LeavesWalBehind() const;

  std::string m_sPath;
  Access m_eAccess;
  Options m_oOptions;
  FileId m_oFile;
  StatementCounter m_oCounter;   ///< outlives the handle, which tells it
  SQLite::Watchdog m_oWatchdog;  ///< as well
  SQLite::Handle m_oHandle;
  FileHeader m_oHeader;
  bool m_bUnchanging = false;  ///< opened as a file that never changes
  bool m_bMadeWal = false;     ///< there was no log beside the file
  int m_iPageSize = 0;
  std::weak_ptr<std::optional<Statement>> m_oCursor;
  std::chrono::steady_clock::time_point m_dNextLook;  ///< for waiting writers
};

}  // namespace ZELWbr3::SQLite
