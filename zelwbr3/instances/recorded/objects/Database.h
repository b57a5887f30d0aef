#pragma once

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

/// The instance that an opened recording shows.
class Database final : public Of<ZELLib3::Database> {
 public:
  explicit Database(const std::shared_ptr<State>& oState) : Of({oState, &oState->oRoot["Database"], {}}) {}

  /// The paths that were recorded as raising or failing.
  const std::unordered_set<std::string>& Raises() const { return Shared().oRaises; }
  const std::unordered_set<std::string>& Fails() const { return Shared().oFails; }

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override;
  std::shared_ptr<ZELLib3::Parameters> Parameters() override;
  std::shared_ptr<ZELLib3::LogSettings> LogSettings() override;
  std::shared_ptr<ZELLib3::SysInfos> SysInfos() override;
  std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() override;
  std::shared_ptr<ZELLib3::Caches> Caches() override;
  std::shared_ptr<ZELLib3::Activity> Activity() override;
  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override;
  std::shared_ptr<ZELLib3::SQLTables> SQLTables() override;
  std::shared_ptr<ZELLib3::DataArea> DataArea() override;
  std::shared_ptr<ZELLib3::LogArea> LogArea() override;
  std::shared_ptr<ZELLib3::Sessions> Sessions() override;
  std::shared_ptr<ZELLib3::HotStandby> HotStandby() override;
  std::shared_ptr<ZELLib3::Snapshot> Snapshot() override;
  std::shared_ptr<ZELLib3::Version> Version() override;
  std::shared_ptr<ZELLib3::History> History() override;

  ZELLib3::Error LastError() override;
  std::string InstanceName() override { return Get<std::string>("InstanceName"); }
  Long InstanceNumber() override { return Get<Long>("InstanceNumber"); }
  std::string OSVersion() override { return Get<std::string>("OSVersion"); }
  std::string OSName() override { return Get<std::string>("OSName"); }
  Long InstanceType() override { return Get<Long>("InstanceType"); }
  Long PlatformType() override { return Get<Long>("PlatformType"); }
  bool Connected() override { return Get<bool>("Connected"); }
  Long PageSize() override { return Get<Long>("PageSize"); }
  std::string RunDirectory() override { return Get<std::string>("RunDirectory"); }
  Long HotStandbyRole() override { return Get<Long>("HotStandbyRole"); }
  bool HotStandbyWarning() override { return Get<bool>("HotStandbyWarning"); }

  bool Shutdown() override { return Change("Shutdown") && Become(ZELLib3::Status::Offline); }
  bool ShutdownQuick() override { return Change("ShutdownQuick") && Become(ZELLib3::Status::Offline); }
  bool Admin() override { return Change("Admin") && Become(ZELLib3::Status::Admin); }
  bool Online() override { return Change("Online") && Become(ZELLib3::Status::Online); }
  bool RestartUntil(const Date& dUntil) override {
    return Change("RestartUntil", Calendar::ISOText(dUntil)) && Become(ZELLib3::Status::Online);
  }
  bool AutoLogOff() override;

 private:
  /// The opened copy takes on a state; always true. The state's text stays as
  /// recorded when the instance was in that state already.
  bool Become(int iStatus);
  Json& StateValue() { return Shared().oRoot["Database"]["StateInfo"]; }
};

}  // namespace ZELWbr3::Recorded
