#pragma once

#include "zelwbr3/ZELLib3/SysInfo.h"
#include "zelwbr3/base/Export.h"

#include <memory>

namespace ZELLib3 {

/// The system information views.
class ZELWBR3_EXPORT SysInfos {
 public:
  virtual ~SysInfos() = default;

  virtual Integer Count() const { return 0; }
  /// 1 to Count; std::out_of_range otherwise.
  virtual std::shared_ptr<SysInfo> Item(Long) const { throw std::out_of_range("There are no views"); }
  virtual bool Refresh() { return true; }
};

}  // namespace ZELLib3
