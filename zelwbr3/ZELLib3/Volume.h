#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// One volume of the data or log area. Sizes are pages; a count of -1 means not
/// available.
class ZELWBR3_EXPORT Volume {
 public:
  virtual ~Volume() = default;

  virtual std::string Name() const { return {}; }
  /// 2 log, 3 data.
  virtual Long Kind() const { return 0; }
  virtual std::string Info1() const { return {}; }
  virtual std::string Info2() const { return {}; }
  virtual Long Size() const { return 0; }
  virtual Long UsedSize() const { return 0; }
  virtual Long FreeSize() const { return 0; }
  virtual bool Configured() const { return false; }
  virtual Long IOCount1() const { return -1; }
  virtual Long IOCount2() const { return -1; }
  virtual Long IOCount3() const { return -1; }
  virtual Long IOCount4() const { return -1; }
};

}  // namespace ZELLib3
