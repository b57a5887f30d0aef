#pragma once

#include "zelwbr3/ZELLib3/LogAreaSettings.h"
#include "zelwbr3/ZELLib3/Volumes.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// The log area.
class ZELWBR3_EXPORT LogArea {
 public:
  virtual ~LogArea() = default;

  /// Never null.
  virtual std::shared_ptr<ZELLib3::Volumes> Volumes() const { return std::make_shared<ZELLib3::Volumes>(); }
  /// Never null.
  virtual std::shared_ptr<LogAreaSettings> Settings() const { return std::make_shared<LogAreaSettings>(); }
  /// Pages: 0 reference of percentages, 1 segment, 2 free, 3 used, 4 not yet
  /// saved, 5 since the last backup; 0 for any other index.
  virtual Long Size(Long) const { return 0; }
  virtual bool Refresh() { return true; }
};

}  // namespace ZELLib3
