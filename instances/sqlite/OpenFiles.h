#pragma once

#include "instances/sqlite/FileId.h"

namespace ZELWbr3::SQLite {

/// Who holds files open, as the kernel tells in /proc.
class OpenFiles {
 public:
  /// How many processes hold the file open, this one included. A process whose
  /// open files may not be read (that of another user, unless this one is
  /// privileged) is not counted, nor is one of another process namespace.
  static int Processes(const FileId& oFile);

  /// The most processes that the system can run, hence that can hold a file
  /// open: SQLite itself has no limit. 0 when the system does not say.
  static int ProcessLimit();
};

}  // namespace ZELWbr3::SQLite
