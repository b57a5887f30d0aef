#pragma once

#include "zelwbr3/ZELLib3/Volume.h"
#include "zelwbr3/base/Export.h"

#include <memory>

namespace ZELLib3 {

/// The volumes of one area. Sizes are pages.
class ZELWBR3_EXPORT Volumes {
 public:
  virtual ~Volumes() = default;

  virtual Long Count() const { return 0; }
  /// 1 to Count; std::out_of_range otherwise.
  virtual std::shared_ptr<Volume> Item(Long) const { throw std::out_of_range("There are no volumes"); }
  virtual Long MaxCount() const { return 0; }
  virtual Long CurrentCount() const { return 0; }
  virtual Long CurrentSize() const { return 0; }
  virtual Long UsedSize() const { return 0; }
  virtual Long TotalSize() const { return 0; }
  /// Data area only.
  virtual Long ReservedSize() const { return 0; }
  /// Log area only, like the next two.
  virtual Long MaxLogCount() const { return 0; }
  virtual Long CurrentLogCount() const { return 0; }
  virtual Long CurrentLogSize() const { return 0; }
};

}  // namespace ZELLib3
