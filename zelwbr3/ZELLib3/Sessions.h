#pragma once

#include "zelwbr3/ZELLib3/Session.h"
#include "zelwbr3/base/Export.h"

#include <memory>

namespace ZELLib3 {

/// The sessions of the instance.
class ZELWBR3_EXPORT Sessions {
 public:
  virtual ~Sessions() = default;

  virtual Integer Count() const { return 0; }
  /// 1 to Count; std::out_of_range otherwise.
  virtual std::shared_ptr<Session> Item(Integer) const { throw std::out_of_range("There are no sessions"); }
  virtual bool Refresh() { return true; }
};

}  // namespace ZELLib3
