#pragma once

#include <array>
#include <cstddef>
#include <string>

struct sqlite3_file;

namespace ZELWbr3::SQLite {

/// What the header of a database file says, whether or not the file is locked.
struct FileHeader {
  int PageSize = 0;  ///< bytes; 0 for a file that is still empty
  /// The file is in WAL mode. This is the one journal mode that a file keeps.
  bool UsesWal = false;

  bool operator==(const FileHeader&) const = default;

  /// Reads through the library's own file. A descriptor of one's own must not
  /// be used for the database file: closing it would drop every lock that this
  /// process holds on it. Raises ZELLib3::InstanceError, which names sPath, for
  /// a file that is not a database.
  static FileHeader Read(sqlite3_file* pFile, const std::string& sPath);

  static constexpr std::size_t Size = 100;
  using Bytes = std::array<unsigned char, Size>;
  /// The header itself, all zero for a file that is still empty. As Read.
  static Bytes ReadBytes(sqlite3_file* pFile, const std::string& sPath);
};

}  // namespace ZELWbr3::SQLite
