#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"
#include "zelwbr3/instances/recorded/objects/Volumes.h"

namespace ZELWbr3::Recorded {

class DataArea final : public Of<ZELLib3::DataArea> {
 public:
  using Of::Of;

  std::shared_ptr<ZELLib3::Volumes> Volumes() const override { return Sub<Recorded::Volumes>("Volumes"); }
  Long Size(Long lIndex) const override { return Indexed<Long>("Size", lIndex, 0); }
  bool Refresh() override { return Do("Refresh"); }
};

}  // namespace ZELWbr3::Recorded
