#pragma once

#include "zelwbr3/ZELLib3/Volumes.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// The data area.
class ZELWBR3_EXPORT DataArea {
 public:
  virtual ~DataArea() = default;

  /// Never null.
  virtual std::shared_ptr<ZELLib3::Volumes> Volumes() const { return std::make_shared<ZELLib3::Volumes>(); }
  /// Pages: 0 usable (the reference of percentages), 1 permanently usable,
  /// 5 reserved for redo; 0 for any other index.
  virtual Long Size(Long) const { return 0; }
  virtual bool Refresh() { return true; }
};

}  // namespace ZELLib3
