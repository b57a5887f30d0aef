#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class Version final : public Of<ZELLib3::Version> {
 public:
  using Of::Of;

  std::string Text() const override { return Get<std::string>("Text"); }
  Long Major() const override { return Get<Long>("Major"); }
  Long Minor() const override { return Get<Long>("Minor"); }
  Long Number() const override { return Get<Long>("Number"); }
  Long Release() const override { return Get<Long>("Release"); }
  Long BuildVersion() const override { return Get<Long>("BuildVersion"); }
};

}  // namespace ZELWbr3::Recorded
