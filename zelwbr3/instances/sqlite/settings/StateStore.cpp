#include "zelwbr3/instances/sqlite/settings/StateStore.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/common/UserFolder.h"
#include "zelwbr3/instances/sqlite/file/FileId.h"
#include "zelwbr3/instances/sqlite/file/Statement.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::SQLite {

namespace {

constexpr int kFormat = 1;
constexpr int kBusyMilliseconds = 2000;

// Times are local, as all dates of an instance are; the rowid keeps the order.
constexpr const char* kMake =
    "CREATE TABLE observed(file TEXT, name TEXT, value TEXT, PRIMARY KEY(file, name)) WITHOUT ROWID;"
    "CREATE TABLE changes(id INTEGER PRIMARY KEY, file TEXT, seen TEXT, name TEXT, value TEXT, new_value TEXT);"
    "CREATE INDEX changes_file ON changes(file);"
    "CREATE TABLE copies(id INTEGER PRIMARY KEY, file TEXT, made TEXT, path TEXT, label TEXT, bytes INTEGER);"
    "CREATE INDEX copies_file ON copies(file, made);"
    "PRAGMA user_version=1";
constexpr const char* kRemember = "INSERT OR REPLACE INTO observed VALUES(?1, ?2, ?3)";

class WriteTransaction {
 public:
  explicit WriteTransaction(sqlite3* pHandle) : m_pHandle(pHandle) {
    Execute(m_pHandle, "BEGIN IMMEDIATE", "beginning to write");
  }
  /// Not committed: nothing of it happens.
  ~WriteTransaction() {
    if (!sqlite3_get_autocommit(m_pHandle)) sqlite3_exec(m_pHandle, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  WriteTransaction(const WriteTransaction&) = delete;
  WriteTransaction& operator=(const WriteTransaction&) = delete;
  void Commit() { Execute(m_pHandle, "COMMIT", "writing"); }

 private:
  sqlite3* m_pHandle;
};

std::int64_t Format(sqlite3* pHandle) {
  Statement oStatement(pHandle, "PRAGMA user_version", "reading the format");
  return oStatement.Step() ? oStatement.Number(0) : 0;
}

/// False for a file that holds nothing yet.
bool HasFormat(sqlite3* pHandle, const std::string& sPath) {
  const std::int64_t lFormat = Format(pHandle);
  if (lFormat == 0) return false;
  if (lFormat != kFormat) {
    RaiseError(SQLITE_SCHEMA, sPath,
               "was written by another version of this program, format " + std::to_string(lFormat));
  }
  return true;
}

StateStore::Settings Observed(sqlite3* pHandle, const std::string& sKey) {
  Statement oStatement(pHandle, "SELECT name, value FROM observed WHERE file = ?1", "reading what was observed");
  oStatement.BindText(1, sKey);
  StateStore::Settings oSettings;
  while (oStatement.Step()) oSettings[oStatement.Text(0)] = oStatement.Text(1);
  return oSettings;
}

}  // namespace

std::string StateStore::KeyOf(const std::string& sPath) {
  struct statx oStat {};
  if (statx(AT_FDCWD, sPath.c_str(), AT_STATX_DONT_SYNC, STATX_INO | STATX_BTIME, &oStat) != 0) {
    RaiseError(SQLITE_CANTOPEN, sPath, "its history cannot be looked up, since the file is not there");
  }
  const std::string sInode = std::to_string(oStat.stx_ino);
  if ((oStat.stx_mask & STATX_BTIME) && oStat.stx_btime.tv_sec > 0) {
    return "born " + std::to_string(oStat.stx_btime.tv_sec) + "." + std::to_string(oStat.stx_btime.tv_nsec) +
           " inode " + sInode;
  }
  return "device " + std::to_string(oStat.stx_dev_major) + ":" + std::to_string(oStat.stx_dev_minor) + " inode " +
         sInode + " path " + sPath;
}

std::string StateStore::Path() const {
  try {
    return (m_sFolder.empty() ? Instances::UserFolder::State() : m_sFolder) + "/history.db";
  } catch (const std::runtime_error& oError) {
    RaiseError(SQLITE_CANTOPEN, "history.db", oError.what());
  }
}

Handle StateStore::OpenToWrite() const {
  namespace fs = std::filesystem;
  const std::string sPath = Path();
  const fs::path oFolder = fs::path(sPath).parent_path();
  std::error_code oError;
  if (!fs::exists(oFolder, oError) && fs::create_directories(oFolder, oError)) {
    // Which files a user looks at is private.
    fs::permissions(oFolder, fs::perms::owner_all, oError);
  }
  if (oError) RaiseError(SQLITE_CANTOPEN, sPath, "its folder cannot be made: " + oError.message());
  Handle oHandle = OpenHandle(sPath, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  sqlite3_busy_timeout(oHandle.get(), kBusyMilliseconds);
  if (!HasFormat(oHandle.get(), sPath)) {
    WriteTransaction oTransaction(oHandle.get());
    // Another process may have made it by now.
    if (!HasFormat(oHandle.get(), sPath)) Execute(oHandle.get(), kMake, "making the tables");
    oTransaction.Commit();
  }
  return oHandle;
}

Handle StateStore::OpenToRead() const {
  const std::string sPath = Path();
  if (!FileId::Of(sPath)) return nullptr;
  Handle oHandle = OpenHandle(sPath, SQLITE_OPEN_READWRITE);  // a journal may have to be rolled back
  sqlite3_busy_timeout(oHandle.get(), kBusyMilliseconds);
  return HasFormat(oHandle.get(), sPath) ? std::move(oHandle) : nullptr;
}

void StateStore::Observe(const std::string& sKey, const Settings& oSettings, const ZELLib3::Date& dSeen) {
  if (const Handle oHandle = OpenToRead(); oHandle && Observed(oHandle.get(), sKey) == oSettings) return;
  const Handle oHandle = OpenToWrite();
  WriteTransaction oTransaction(oHandle.get());
  // Read once more: what another process has noticed already is no change.
  const Settings oBefore = Observed(oHandle.get(), sKey);
  Statement oObserve(oHandle.get(), kRemember, "writing what was observed");
  Statement oChange(oHandle.get(), "INSERT INTO changes(file, seen, name, value, new_value) VALUES(?1, ?2, ?3, ?4, ?5)",
                    "writing a change");
  for (const auto& [sName, sValue] : oSettings) {
    const auto it = oBefore.find(sName);
    if (it != oBefore.end() && it->second == sValue) continue;
    if (it != oBefore.end()) oChange.Run(sKey, Calendar::ISOText(dSeen, ' '), sName, it->second, sValue);
    oObserve.Run(sKey, sName, sValue);
  }
  oTransaction.Commit();
}

std::vector<StateStore::Change> StateStore::Changes(const std::string& sKey) const {
  std::vector<Change> oChanges;
  const Handle oHandle = OpenToRead();
  if (!oHandle) return oChanges;
  Statement oStatement(oHandle.get(),
                       "SELECT seen, name, value, new_value FROM changes WHERE file = ?1 ORDER BY id DESC",
                       "reading the changes");
  oStatement.BindText(1, sKey);
  while (oStatement.Step()) {
    oChanges.push_back({Calendar::ParseISO(oStatement.Text(0), ' ').value_or(ZELLib3::Date{}), oStatement.Text(1),
                        oStatement.Text(2), oStatement.Text(3)});
  }
  return oChanges;
}

void StateStore::Add(const std::string& sKey, const Copy& oCopy) {
  const Handle oHandle = OpenToWrite();
  Statement(oHandle.get(), "INSERT INTO copies(file, made, path, label, bytes) VALUES(?1, ?2, ?3, ?4, ?5)",
            "registering a copy")
      .Run(sKey, Calendar::ISOText(oCopy.Made, ' '), oCopy.File, oCopy.Label, oCopy.Bytes);
}

std::vector<StateStore::Copy> StateStore::Copies(const std::string& sKey) const {
  std::vector<Copy> oCopies;
  const Handle oHandle = OpenToRead();
  if (!oHandle) return oCopies;
  Statement oStatement(oHandle.get(),
                       "SELECT made, path, label, bytes FROM copies WHERE file = ?1 ORDER BY made DESC, id DESC",
                       "reading the copies");
  oStatement.BindText(1, sKey);
  while (oStatement.Step()) {
    oCopies.push_back({oStatement.Text(1), Calendar::ParseISO(oStatement.Text(0), ' ').value_or(ZELLib3::Date{}),
                       oStatement.Text(2), oStatement.Number(3)});
  }
  return oCopies;
}

void StateStore::Remember(const std::string& sKey, const Settings& oFacts) {
  const Settings oKnown = Facts(sKey);
  // Known with the same values, all of them.
  if (std::includes(oKnown.begin(), oKnown.end(), oFacts.begin(), oFacts.end())) return;
  const Handle oHandle = OpenToWrite();
  WriteTransaction oTransaction(oHandle.get());
  Statement oRemember(oHandle.get(), kRemember, "writing what is remembered");
  for (const auto& [sName, sValue] : oFacts) oRemember.Run(sKey, sName, sValue);
  oTransaction.Commit();
}

StateStore::Settings StateStore::Facts(const std::string& sKey) const {
  const Handle oHandle = OpenToRead();
  return oHandle ? Observed(oHandle.get(), sKey) : Settings{};
}

}  // namespace ZELWbr3::SQLite
