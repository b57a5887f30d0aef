#pragma once

#include "framework/ZELLib3/HistoryItem.h"

#include <memory>

namespace ZELLib3 {

/// The backup history, newest entry first, read in blocks like a RowSource.
class History {
 public:
  virtual ~History() = default;

  virtual bool IsEmpty() const { return true; }
  /// Entries delivered so far.
  virtual Long RowCount() const { return 0; }
  virtual bool Open() { return true; }
  virtual bool ReadMore() { return false; }
  /// The next entry of the block; null at its end.
  virtual std::shared_ptr<const HistoryItem> NextItem() { return nullptr; }
  virtual bool EndOfBlock() const { return true; }
  virtual bool HasMore() const { return false; }
};

}  // namespace ZELLib3
