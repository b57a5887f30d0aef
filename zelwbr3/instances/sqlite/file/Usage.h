#pragma once

#include "zelwbr3/instances/sqlite/file/FileId.h"
#include "zelwbr3/instances/sqlite/file/WalFile.h"

#include <algorithm>
#include <cstdint>

namespace ZELWbr3::SQLite {

class Connection;

/// The figures of one moment: all are read in one transaction, so they agree
/// with one another. Sizes are pages.
struct Usage {
  std::int64_t PageCount = 0;
  std::int64_t FreePages = 0;
  std::int64_t TempPages = 0;
  std::int64_t MaxPageCount = 0;
  FileId File;
  bool UsesWal = false;
  WalFile Wal;
  std::int64_t AutoCheckpoint = 0;  ///< frames at which a writer runs a checkpoint; 0 = never
  std::int64_t CachePages = 0;      ///< limit of this connection's page cache
  std::int64_t CacheUsed = 0;
  std::int64_t CacheHits = 0;
  std::int64_t CacheMisses = 0;
  std::int64_t CacheWrites = 0;
  std::int64_t SchemaBytes = 0;  ///< memory that holds the schema

  /// Frames that the log file has room for, but at least the number at which a
  /// writer runs a checkpoint. 0 without a log.
  std::int64_t LogTotal() const { return UsesWal ? std::max(Wal.FileFrames, AutoCheckpoint) : 0; }

  /// Raises ZELLib3::InstanceError.
  static Usage Read(Connection& oConnection);
};

}  // namespace ZELWbr3::SQLite
