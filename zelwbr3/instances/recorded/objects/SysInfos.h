#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"
#include "zelwbr3/instances/recorded/objects/SysInfo.h"

namespace ZELWbr3::Recorded {

class SysInfos final : public Of<ZELLib3::SysInfos> {
 public:
  using Of::Of;

  Integer Count() const override { return Object::Count<Integer>(); }
  std::shared_ptr<ZELLib3::SysInfo> Item(Long lItem) const override { return Object::Item<Recorded::SysInfo>(lItem); }
  bool Refresh() override { return Do("Refresh"); }
};

}  // namespace ZELWbr3::Recorded
