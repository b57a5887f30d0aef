#pragma once

#include "zelwbr3/ZELLib3/BlockSource.h"
#include "zelwbr3/ZELLib3/HistoryItem.h"
#include "zelwbr3/base/Export.h"

#include <memory>

namespace ZELLib3 {

/// The backup history, newest entry first, read in blocks.
class ZELWBR3_EXPORT History : public BlockSource {
 public:
  /// The next entry of the block; null at its end.
  virtual std::shared_ptr<const HistoryItem> NextItem() { return nullptr; }
};

}  // namespace ZELLib3
