#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class Snapshot final : public Of<ZELLib3::Snapshot> {
 public:
  using Of::Of;

  std::string ID() const override { return Get<std::string>("ID"); }
  ZELWbr3::Date Created() const override { return Get<ZELWbr3::Date>("Created"); }
  bool Exists() const override { return Get<bool>("Exists"); }
  Long Size() const override { return Get<Long>("Size"); }
};

}  // namespace ZELWbr3::Recorded
