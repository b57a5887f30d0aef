#pragma once

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/recorded/objects/Object.h"
#include "zelwbr3/instances/recorded/objects/Parameter.h"

namespace ZELWbr3::Recorded {

class Parameters final : public Of<ZELLib3::Parameters> {
 public:
  using Of::Of;

  Long Count() const override { return Object::Count<Long>(); }
  std::shared_ptr<ZELLib3::Parameter> Item(Long lItem) const override {
    return Object::Item<Recorded::Parameter>(lItem);
  }
  std::shared_ptr<ZELLib3::Parameter> Item(const std::string& sName) const override {
    Check("Item");
    const auto it = Shared().oParameters.find(Text::Trim(sName));
    const Json& oValue = it != Shared().oParameters.end() ? List("Items")[it->second] : Nothing();
    return std::make_shared<Recorded::Parameter>(Place{Here().oState, &oValue, Join(Here().sPath, "Item")});
  }

  bool Load() override { return Do("Load"); }
  bool Read() override { return Do("Read"); }
};

}  // namespace ZELWbr3::Recorded
