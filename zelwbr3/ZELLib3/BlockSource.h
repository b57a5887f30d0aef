#pragma once

#include "zelwbr3/ZELLib3/Error.h"

namespace ZELLib3 {

/// Something that is read in blocks: Open delivers the first one, ReadMore the
/// next. What a block holds is stepped through before the next one is asked
/// for.
class BlockSource {
 public:
  virtual ~BlockSource() = default;

  virtual bool IsEmpty() const { return true; }
  /// Rows delivered so far.
  virtual Long RowCount() const { return 0; }
  virtual bool Open() { return true; }
  virtual bool ReadMore() { return false; }
  /// The next block will not be asked for at once, although it may be later: a
  /// source that keeps something open in the instance lets go of it.
  virtual void Pause() {}
  /// The block's last row has been stepped over.
  virtual bool EndOfBlock() const { return true; }
  /// Rows remain beyond the block.
  virtual bool HasMore() const { return false; }
};

}  // namespace ZELLib3
