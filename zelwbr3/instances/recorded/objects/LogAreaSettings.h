#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class LogAreaSettings final : public Of<ZELLib3::LogAreaSettings> {
 public:
  using Of::Of;

  Long LogMode() const override { return Get<Long>("LogMode"); }
  Long Overwrite() const override { return Get<Long>("Overwrite"); }
  Long RedoLog() const override { return Get<Long>("RedoLog"); }
};

}  // namespace ZELWbr3::Recorded
