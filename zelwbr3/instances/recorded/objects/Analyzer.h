#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

/// The analyzer; its operations change the opened copy.
class Analyzer final : public Of<ZELLib3::Analyzer> {
 public:
  using Of::Of;

  Long State() const override { return Get<Long>("State"); }
  std::string Info() const override { return Get<std::string>("Info"); }
  std::string ConfigFile() const override { return Get<std::string>("ConfigFile"); }
  std::string ProtocolDir() const override { return Get<std::string>("ProtocolDir"); }
  Long Interval() const override { return Get<Long>("Interval"); }
  std::string Reconnect() const override { return Get<std::string>("Reconnect"); }
  std::string ProcessID() const override { return Get<std::string>("ProcessID"); }
  std::string SessionID() const override { return Get<std::string>("SessionID"); }
  std::string StartTime() const override { return Get<std::string>("StartTime"); }
  bool HasError() const override { return Get<bool>("HasError"); }
  std::string ErrorText() const override { return Get<std::string>("ErrorText"); }
  std::optional<std::vector<ProtocolSet>> ProtocolSets() override;

  bool Start(const StartOptions& oOptions) override;
  bool Stop() override;
  bool DeleteProtocols(const std::string& sUntilDate) override;

 private:
  Json& Value() { return Shared().oRoot["Database"]["Analyzer"]; }
};

}  // namespace ZELWbr3::Recorded
