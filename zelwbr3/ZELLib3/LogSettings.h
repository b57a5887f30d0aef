#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// How the instance writes its log. Each code: 2 = active, anything else not.
class ZELWBR3_EXPORT LogSettings {
 public:
  virtual ~LogSettings() = default;

  /// The log overwrites itself without a backup.
  virtual Long AutoOverwrite() const { return 0; }
  /// Nothing is written to the log.
  virtual Long WriteOff() const { return 0; }
};

}  // namespace ZELLib3
