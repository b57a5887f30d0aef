#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class Session final : public Of<ZELLib3::Session> {
 public:
  using Of::Of;

  Long Index() const override { return Get<Long>("Index"); }
  std::string Name() const override { return Get<std::string>("Name"); }
  std::string Field1() const override { return Get<std::string>("Field1"); }
  std::string Field2() const override { return Get<std::string>("Field2"); }
  std::string Field3() const override { return Get<std::string>("Field3"); }
  std::string Field4() const override { return Get<std::string>("Field4"); }
  std::string Field5() const override { return Get<std::string>("Field5"); }
};

}  // namespace ZELWbr3::Recorded
