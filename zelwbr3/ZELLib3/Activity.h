#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// Counters since the instance was started; -1 = not available, also returned
/// for an index out of bounds.
class ZELWBR3_EXPORT Activity {
 public:
  virtual ~Activity() = default;

  /// 0 commands, 1 creates, 2 prepares, 3 alters, 4 executes, 5 drops,
  /// 6 rollbacks, 7 commits, 8 and 9 procedure calls from outside and inside,
  /// 10 updates with rows 11 read and 12 changed, 13 deletes with rows 14 read
  /// and 15 deleted, 16 selects and fetches with rows 17 read and 18 qualified,
  /// 19 inserts with 20 rows added, 21 table scans, 22 cache sorts, 23 index
  /// scans, 24 row sorts.
  virtual double SQLCounter(Long) const { return -1; }
  /// 0 physical reads, 1 logical reads, 2 physical writes, 3 logical writes.
  virtual double IOCounter(Long) const { return -1; }
  /// 0 available entries, 1 maximum set, 2 average set, 3 row locks, 4 table
  /// locks, 5 owners, 6 requestors, 7 collisions, 8 escalations.
  virtual double LockCounter(Long) const { return -1; }
  /// 0 pages written, 1 group commits, 2 waits for the log writer, 3 queue
  /// overflows.
  virtual double LogCounter(Long) const { return -1; }

  virtual bool Refresh() { return true; }
};

}  // namespace ZELLib3
