#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"
#include "zelwbr3/instances/recorded/objects/Volume.h"

namespace ZELWbr3::Recorded {

class Volumes final : public Of<ZELLib3::Volumes> {
 public:
  using Of::Of;

  Long Count() const override { return Object::Count<Long>(); }
  std::shared_ptr<ZELLib3::Volume> Item(Long lItem) const override { return Object::Item<Recorded::Volume>(lItem); }
  Long MaxCount() const override { return Get<Long>("MaxCount"); }
  Long CurrentCount() const override { return Get<Long>("CurrentCount"); }
  Long CurrentSize() const override { return Get<Long>("CurrentSize"); }
  Long UsedSize() const override { return Get<Long>("UsedSize"); }
  Long TotalSize() const override { return Get<Long>("TotalSize"); }
  Long ReservedSize() const override { return Get<Long>("ReservedSize"); }
  Long MaxLogCount() const override { return Get<Long>("MaxLogCount"); }
  Long CurrentLogCount() const override { return Get<Long>("CurrentLogCount"); }
  Long CurrentLogSize() const override { return Get<Long>("CurrentLogSize"); }
};

}  // namespace ZELWbr3::Recorded
