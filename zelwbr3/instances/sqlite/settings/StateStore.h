#pragma once

#include "zelwbr3/instances/sqlite/file/FileId.h"
#include "zelwbr3/instances/sqlite/file/Handle.h"

#include "zelwbr3/ZELLib3/HistoryItem.h"

#include <map>
#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

/// What is remembered about database files, apart from them: the settings that
/// were observed, their changes, and copies that the host has registered.
///
/// One small database in the user's state folder, opened for each call and
/// closed again. Several processes may use it at a time. Failures raise
/// ZELLib3::InstanceError that names it.
class StateStore {
 public:
  using Settings = std::map<std::string, std::string>;

  struct Change {
    ZELLib3::Date Seen;  ///< when it was noticed; the change itself is older
    std::string Name;
    std::string Value;
    std::string NewValue;
  };

  /// A copy of the database file that the host has made.
  struct Copy {
    std::string File;
    ZELLib3::Date Made;
    std::string Label;
    std::int64_t Bytes = -1;  ///< size at the time; -1 = unknown
  };

  /// Nothing is opened or made yet. sFolder may be missing; empty = the user's
  /// state folder.
  explicit StateStore(std::string sFolder) : m_sFolder(std::move(sFolder)) {}

  /// Which file it is, also after it has been renamed or has grown: by inode
  /// and time of birth. A file system that keeps no such time makes it device,
  /// inode and path.
  static std::string KeyOf(const std::string& sPath);

  /// Compares with what was observed before and remembers the differences as
  /// changes seen at dSeen. Writes only when there are any.
  void Observe(const std::string& sKey, const Settings& oSettings, const ZELLib3::Date& dSeen);
  /// Newest first.
  std::vector<Change> Changes(const std::string& sKey) const;

  void Add(const std::string& sKey, const Copy& oCopy);
  /// Newest first.
  std::vector<Copy> Copies(const std::string& sKey) const;

 private:
  std::string Path() const;
  Handle OpenToWrite() const;
  /// Null when nothing has been remembered yet.
  Handle OpenToRead() const;

  std::string m_sFolder;
};

}  // namespace ZELWbr3::SQLite
