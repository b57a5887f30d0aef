#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class HotStandby final : public Of<ZELLib3::HotStandby> {
 public:
  using Of::Of;

  bool Enabled() const override { return Get<bool>("Enabled"); }
  std::string OfficialNode() const override { return Get<std::string>("OfficialNode"); }
  std::vector<Node> Nodes() const override { return Get<std::vector<Node>>("Nodes"); }
};

}  // namespace ZELWbr3::Recorded
