#pragma once

#include "zelwbr3/ZELLib3/RowSource.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// One system information view.
class ZELWBR3_EXPORT SysInfo : public RowSource {
 public:
  virtual Long Index() const { return 0; }
  virtual std::string Name() const { return {}; }
  virtual std::string Description() const { return {}; }
  /// One record, to be shown as name/value rows.
  virtual bool IsRecord() const { return false; }
};

}  // namespace ZELLib3
