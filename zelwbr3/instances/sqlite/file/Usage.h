#pragma once

#include "zelwbr3/instances/sqlite/file/FileId.h"
#include "zelwbr3/instances/sqlite/file/WalFile.h"

#include <algorithm>
#include <cstdint>

namespace ZELWbr3::SQLite {

class Connection;

/// The figures of one moment: all are read in one transaction, so they agree
/// with one another. Sizes are pages, but of a file with pages of 512 bytes they
/// are counted in pages of 1 KB: nothing smaller can be shown.
struct Usage {
  /// Bytes of the pages in which a file with such pages is counted.
  static int UnitOf(int iPageSize) { return std::max(1024, iPageSize); }

  std::int64_t PageCount = 0;
  std::int64_t FreePages = 0;
  std::int64_t TempPages = 0;
  bool IsFull = false;  ///< no page is free, and there may be no more of them
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
  int PagesInUnit = 1;           ///< of the file in one of those counted

  /// Pages that the frames of the log hold.
  std::int64_t PagesOf(std::int64_t lFrames) const { return (lFrames + PagesInUnit - 1) / PagesInUnit; }
  /// Pages that the log file has room for, but at least the number at which a
  /// writer runs a checkpoint. 0 without a log.
  std::int64_t LogTotal() const { return UsesWal ? PagesOf(std::max(Wal.FileFrames, AutoCheckpoint)) : 0; }
  std::int64_t LogUsed() const { return PagesOf(Wal.Used()); }

  /// Raises ZELLib3::InstanceError.
  static Usage Read(Connection& oConnection);
};

}  // namespace ZELWbr3::SQLite
