#include "zelwbr3/instances/sqlite/file/Connection.h"

#include "zelwbr3/instances/common/ResolveLinks.h"
#include "zelwbr3/instances/sqlite/file/FileLock.h"
#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace ZELWbr3::SQLite {

namespace {

/// Asking the kernel for all locks takes longer than reading a block.
constexpr std::chrono::milliseconds kBetweenLooks(20);

bool MayAccess(const std::string& sPath, int lMode) {
  return faccessat(AT_FDCWD, sPath.c_str(), lMode, AT_EACCESS) == 0;
}

/// A database is written by writing the file and files beside it.
bool MayWrite(const std::string& sPath) {
  const std::string sFolder = std::filesystem::path(sPath).parent_path().string();
  return MayAccess(sPath, W_OK) && MayAccess(sFolder, W_OK | X_OK);
}

bool HasContent(const std::string& sPath) {
  const auto oFile = FileId::Of(sPath);
  return oFile && oFile->Bytes > 0;
}

/// The log that the library keeps for a file: it follows links first.
std::string LogOf(const std::string& sPath) { return Instances::ResolveLinks(sPath) + "-wal"; }

/// Says why a name cannot be opened as a database, before the library tries: it
/// would wait for a writer of a pipe, and has one message for everything.
void CheckFile(const std::string& sPath) {
  struct stat oStat {};
  if (stat(sPath.c_str(), &oStat) != 0) {
    RaiseError(SQLITE_CANTOPEN, sPath, errno == ENOENT ? "no such file" : std::strerror(errno));
  }
  if (S_ISDIR(oStat.st_mode)) RaiseError(SQLITE_CANTOPEN, sPath, "is a folder, not a database file");
  if (!S_ISREG(oStat.st_mode)) RaiseError(SQLITE_CANTOPEN, sPath, "is not a regular file");
  if (!MayAccess(sPath, R_OK)) RaiseError(SQLITE_CANTOPEN, sPath, std::strerror(errno));
  if (oStat.st_size < static_cast<off_t>(FileHeader::Size) && HasContent(LogOf(sPath))) {
    RaiseError(SQLITE_NOTADB, sPath,
               "a write-ahead log without its database: the file has been cut off, and its log " + LogOf(sPath) +
                   " still has content; it would be lost if the file were opened");
  }
}

}  // namespace

Connection::Connection(const std::string& sPath, Access eAccess, const Options& oOptions,
                       const std::atomic<bool>& bInterrupted)
    : m_sPath(sPath), m_eAccess(eAccess), m_oOptions(oOptions), m_oWatchdog(bInterrupted) {
  CheckFile(m_sPath);
  if (const auto oFile = FileId::Of(m_sPath)) m_oFile = *oFile;
  Open();
  Configure();
  if (m_eAccess == Access::Exclusive) LockOthersOut();
  Execute(Handle(), "PRAGMA query_only=1", "protecting the file from changes");
  m_iPageSize = m_oHeader.PageSize;
  if (m_iPageSize == 0) m_iPageSize = static_cast<int>(Number("PRAGMA page_size", "reading the page size"));
}

Connection::~Connection() {
  EndCursor();
  if (!LeavesWalBehind()) sqlite3_db_config(Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

void Connection::Open() {
  m_oHandle = OpenHandle(m_sPath, SQLITE_OPEN_READONLY);
  m_oHeader = FileHeader::Read(MainFile(), m_sPath);
  const bool bMayWrite = MayWrite(sqlite3_db_filename(Handle(), "main"));
  if (m_eAccess != Access::Figures) {
    if (!bMayWrite) RaiseError(SQLITE_READONLY, m_sPath, "this needs write access to the file and its folder");
  } else if (!m_oHeader.UsesWal) {
    return;  // read only, so nothing can be written by accident
  } else if (!bMayWrite) {
    // A log that others write can be shared. Without one the file is complete
    // in itself, and making a log would be refused, or would make one that the
    // file's owner cannot write.
    m_bUnchanging = !HasContent(WalPath());
    if (m_bUnchanging) m_oHandle = OpenHandle(m_sPath, SQLITE_OPEN_READONLY, "immutable=1");
    return;
  }
  m_bMadeWal = m_oHeader.UsesWal && !FileId::Of(WalPath());
  // A read-only connection could not take an empty log away again.
  m_oHandle = OpenHandle(m_sPath, SQLITE_OPEN_READWRITE);
}

void Connection::Configure() {
  sqlite3* pHandle = Handle();
  m_oCounter.Watch(pHandle);
  BusyTimeout(m_oOptions.BusyTimeout);
  m_oWatchdog.Watch(pHandle);
  BeginReading();
  sqlite3_limit(pHandle, SQLITE_LIMIT_LENGTH, LongestValue);
  sqlite3_db_config(pHandle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  // The schema of a stranger's file is data, not code.
  sqlite3_db_config(pHandle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(pHandle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
}

void Connection::LockOthersOut() {
  const std::string sAsked = "locking other connections out";
  Execute(Handle(), "PRAGMA locking_mode=EXCLUSIVE", sAsked);
  Execute(Handle(), "BEGIN EXCLUSIVE", sAsked);
  Execute(Handle(), "COMMIT", sAsked);  // in this locking mode the lock stays
}

bool Connection::IsCurrent() const {
  const auto oNow = FileId::Of(m_sPath);
  if (!oNow || !oNow->IsSameFile(m_oFile)) return false;
  if (m_bUnchanging) return oNow->IsUnchanged(m_oFile) && !HasContent(WalPath());
  if (m_eAccess == Access::Exclusive) return true;
  return FileHeader::Read(MainFile(), m_sPath) == m_oHeader;
}

/// The library takes an empty log away when the last connection ends, provided
/// it may do so. It may do it to a log that this connection made and no other has
/// written to.
bool Connection::LeavesWalBehind() const { return !m_bMadeWal || HasContent(WalPath()); }

bool Connection::IsReadOnly() const { return sqlite3_db_readonly(Handle(), "main") == 1; }

std::string Connection::WalPath() const { return sqlite3_filename_wal(sqlite3_db_filename(Handle(), "main")); }

sqlite3_file* Connection::MainFile() const {
  sqlite3_file* pFile = nullptr;
  sqlite3_file_control(Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &pFile);
  return pFile;
}

std::int64_t Connection::MaxPageCount() {
  const std::string sLimit = m_oOptions.MaxPageCount > 0 ? "=" + std::to_string(m_oOptions.MaxPageCount) : "";
  return Number("PRAGMA max_page_count" + sLimit, "reading the page limit");
}

void Connection::BusyTimeout(std::chrono::milliseconds dTimeout) {
  sqlite3_busy_timeout(Handle(), static_cast<int>(dTimeout.count()));
}

std::string Connection::JournalMode() {
  return UsesWal() ? "wal" : Text("PRAGMA main.journal_mode", "reading the journal mode");
}

Statement Connection::Prepare(const std::string& sSQL, const std::string& sAsked) {
  EndCursor();
  return Statement(Handle(), sSQL, sAsked);
}

Connection::Cursor Connection::KeepOpen(Statement oStatement) {
  EndCursor();
  Cursor oCursor = std::make_shared<std::optional<Statement>>(std::move(oStatement));
  m_oCursor = oCursor;
  return oCursor;
}

void Connection::EndCursor() {
  if (const Cursor oCursor = m_oCursor.lock()) oCursor->reset();
}

bool Connection::IsAwaited() {
  const auto dNow = std::chrono::steady_clock::now();
  if (UsesWal() || dNow < m_dNextLook) return false;
  m_dNextLook = dNow + kBetweenLooks;
  const auto oLocks = OpenFiles::Locks();
  return oLocks && std::ranges::any_of(*oLocks, [this](const OpenFiles::Lock& oLock) {
           return oLock.Inode == m_oFile.Inode && oLock.IsExclusive && oLock.First <= FileLock::Pending &&
                  oLock.Last >= FileLock::Pending;
         });
}

std::int64_t Connection::Number(const std::string& sSQL, const std::string& sAsked) {
  Statement oStatement = Prepare(sSQL, sAsked);
  return oStatement.Step() ? oStatement.Number(0) : 0;
}

std::string Connection::Text(const std::string& sSQL, const std::string& sAsked) {
  Statement oStatement = Prepare(sSQL, sAsked);
  return oStatement.Step() ? oStatement.Text(0) : std::string();
}

}  // namespace ZELWbr3::SQLite
