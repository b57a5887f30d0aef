#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class Volume final : public Of<ZELLib3::Volume> {
 public:
  using Of::Of;

  std::string Name() const override { return Get<std::string>("Name"); }
  Long Kind() const override { return Get<Long>("Kind"); }
  std::string Info1() const override { return Get<std::string>("Info1"); }
  std::string Info2() const override { return Get<std::string>("Info2"); }
  Long Size() const override { return Get<Long>("Size"); }
  Long UsedSize() const override { return Get<Long>("UsedSize"); }
  Long FreeSize() const override { return Get<Long>("FreeSize"); }
  bool Configured() const override { return Get<bool>("Configured"); }
  Long IOCount1() const override { return Get<Long>("IOCount1", -1); }
  Long IOCount2() const override { return Get<Long>("IOCount2", -1); }
  Long IOCount3() const override { return Get<Long>("IOCount3", -1); }
  Long IOCount4() const override { return Get<Long>("IOCount4", -1); }
};

}  // namespace ZELWbr3::Recorded
