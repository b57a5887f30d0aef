#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// Settings of the log area, each 0 unknown, 1 or 2.
class ZELWBR3_EXPORT LogAreaSettings {
 public:
  virtual ~LogAreaSettings() = default;

  /// 1 single, 2 mirrored.
  virtual Long LogMode() const { return 0; }
  /// 1 normal, 2 overwrite.
  virtual Long Overwrite() const { return 0; }
  /// 1 activated, 2 deactivated.
  virtual Long RedoLog() const { return 0; }
};

}  // namespace ZELLib3
