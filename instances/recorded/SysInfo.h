#pragma once

#include "instances/recorded/Rows.h"

namespace ZELWbr3::Recorded {

class SysInfo final : public Rows<ZELLib3::SysInfo> {
 public:
  using Rows::Rows;

  Long Index() const override { return Get<Long>("Index"); }
  std::string Name() const override { return Get<std::string>("Name"); }
  std::string Description() const override { return Get<std::string>("Description"); }
  bool IsRecord() const override { return Get<bool>("IsRecord"); }

 private:
  const Json* Source() override { return Here().pValue; }
  const Json& Closed() const override { return *Here().pValue; }
};

}  // namespace ZELWbr3::Recorded
