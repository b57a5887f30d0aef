#pragma once

#include "zelwbr3/instances/recorded/objects/Rows.h"

namespace ZELWbr3::Recorded {

class SysInfo final : public Rows<ZELLib3::SysInfo> {
 public:
  explicit SysInfo(const Place& oPlace) : Rows(oPlace, *oPlace.pValue) {}

  Long Index() const override { return Get<Long>("Index"); }
  std::string Name() const override { return Get<std::string>("Name"); }
  std::string Description() const override { return Get<std::string>("Description"); }
  bool IsRecord() const override { return Get<bool>("IsRecord"); }
};

}  // namespace ZELWbr3::Recorded
