#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// Something that is read in blocks: Open delivers the first one, ReadMore the
/// next. The reader steps through a block before it requests the next one.
class ZELWBR3_EXPORT BlockSource {
 public:
  virtual ~BlockSource() = default;

  virtual bool IsEmpty() const { return true; }
  /// Rows delivered so far.
  virtual Long RowCount() const { return 0; }
  virtual bool Open() { return true; }
  virtual bool ReadMore() { return false; }
  /// The next block will not be requested right away, but may be later. A source
  /// that keeps something open in the instance closes it.
  virtual void Pause() {}
  /// The reader has stepped over the block's last row.
  virtual bool EndOfBlock() const { return true; }
  /// There are rows after the block.
  virtual bool HasMore() const { return false; }
};

}  // namespace ZELLib3
