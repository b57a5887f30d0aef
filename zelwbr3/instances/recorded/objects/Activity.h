#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class Activity final : public Of<ZELLib3::Activity> {
 public:
  using Of::Of;

  double SQLCounter(Long lIndex) const override { return Counter("SQLCounter", lIndex); }
  double IOCounter(Long lIndex) const override { return Counter("IOCounter", lIndex); }
  double LockCounter(Long lIndex) const override { return Counter("LockCounter", lIndex); }
  double LogCounter(Long lIndex) const override { return Counter("LogCounter", lIndex); }
  bool Refresh() override { return Do("Refresh"); }
};

}  // namespace ZELWbr3::Recorded
