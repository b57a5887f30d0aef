#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/instances/sqlite/file/FileId.h"

#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

/// Who holds files open, and locked, as the kernel tells in /proc.
///
/// A process whose open files may not be read (that of another user, unless
/// this one is privileged) is not seen, nor is one of another process
/// namespace.
class OpenFiles {
 public:
  struct Process {
    int ID;
    std::string Program;  ///< file name of the program; empty when not known
    std::string User;     ///< the number of a user without a name
    /// When the process was started; no date when not known. The kernel does not
    /// keep when it has opened a file.
    ZELLib3::Date Since;
  };

  /// A lock on a range of bytes.
  struct Lock {
    int Process;
    ino_t Inode;
    bool IsExclusive;
    std::int64_t First;
    std::int64_t Last;
  };

  /// How many processes hold the file open, this one included.
  static int Processes(const FileId& oFile);
  /// These processes, in the order of their numbers.
  static std::vector<Process> Holders(const FileId& oFile);
  /// All locks that are held; no value when the kernel does not tell them.
  static std::optional<std::vector<Lock>> Locks();

  /// The most processes that the system can run, hence that can hold a file
  /// open: SQLite itself has no limit. 0 when the system does not say.
  static int ProcessLimit();
};

}  // namespace ZELWbr3::SQLite
