#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class LogSettings final : public Of<ZELLib3::LogSettings> {
 public:
  using Of::Of;

  Long AutoOverwrite() const override { return Get<Long>("AutoOverwrite"); }
  Long WriteOff() const override { return Get<Long>("WriteOff"); }
};

}  // namespace ZELWbr3::Recorded
