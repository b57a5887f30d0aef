#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"
#include "zelwbr3/instances/recorded/objects/Session.h"

namespace ZELWbr3::Recorded {

class Sessions final : public Of<ZELLib3::Sessions> {
 public:
  using Of::Of;

  Integer Count() const override { return Object::Count<Integer>(); }
  std::shared_ptr<ZELLib3::Session> Item(Integer lItem) const override {
    return Object::Item<Recorded::Session>(static_cast<int>(lItem));
  }
  bool Refresh() override { return Do("Refresh"); }
};

}  // namespace ZELWbr3::Recorded
