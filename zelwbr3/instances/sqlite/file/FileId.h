#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

namespace ZELWbr3::SQLite {

/// Which file stands under a name, and what it was like when looked at.
struct FileId {
  dev_t Device = 0;
  ino_t Inode = 0;
  std::int64_t Bytes = 0;
  timespec Modified{};

  /// No value when nothing stands under the name.
  static std::optional<FileId> Of(const std::string& sPath) {
    struct stat oStat {};
    if (stat(sPath.c_str(), &oStat) != 0) return std::nullopt;
    return FileId{oStat.st_dev, oStat.st_ino, oStat.st_size, oStat.st_mtim};
  }

  bool IsSameFile(const FileId& oOther) const { return Device == oOther.Device && Inode == oOther.Inode; }
  bool IsUnchanged(const FileId& oOther) const {
    return IsSameFile(oOther) && Bytes == oOther.Bytes && Modified.tv_sec == oOther.Modified.tv_sec &&
           Modified.tv_nsec == oOther.Modified.tv_nsec;
  }
};

}  // namespace ZELWbr3::SQLite
