#include "zelwbr3/instances/recorded/objects/Database.h"

#include "zelwbr3/instances/recorded/objects/Activity.h"
#include "zelwbr3/instances/recorded/objects/Analyzer.h"
#include "zelwbr3/instances/recorded/objects/Caches.h"
#include "zelwbr3/instances/recorded/objects/DataArea.h"
#include "zelwbr3/instances/recorded/objects/History.h"
#include "zelwbr3/instances/recorded/objects/HotStandby.h"
#include "zelwbr3/instances/recorded/objects/LogArea.h"
#include "zelwbr3/instances/recorded/objects/LogSettings.h"
#include "zelwbr3/instances/recorded/objects/ParameterHistory.h"
#include "zelwbr3/instances/recorded/objects/Parameters.h"
#include "zelwbr3/instances/recorded/objects/SQLTables.h"
#include "zelwbr3/instances/recorded/objects/Sessions.h"
#include "zelwbr3/instances/recorded/objects/Snapshot.h"
#include "zelwbr3/instances/recorded/objects/StateInfo.h"
#include "zelwbr3/instances/recorded/objects/SysInfos.h"
#include "zelwbr3/instances/recorded/objects/Version.h"

namespace ZELWbr3::Recorded {

namespace Z = ZELLib3;

std::shared_ptr<Z::StateInfo> Database::StateInfo() { return Sub<Recorded::StateInfo>("StateInfo"); }
std::shared_ptr<Z::Parameters> Database::Parameters() { return Sub<Recorded::Parameters>("Parameters"); }
std::shared_ptr<Z::LogSettings> Database::LogSettings() { return Sub<Recorded::LogSettings>("LogSettings"); }
std::shared_ptr<Z::SysInfos> Database::SysInfos() { return Sub<Recorded::SysInfos>("SysInfos"); }
std::shared_ptr<Z::ParameterHistory> Database::ParameterHistory() {
  return Sub<Recorded::ParameterHistory>("ParameterHistory");
}
std::shared_ptr<Z::Caches> Database::Caches() { return Sub<Recorded::Caches>("Caches"); }
std::shared_ptr<Z::Activity> Database::Activity() { return Sub<Recorded::Activity>("Activity"); }
std::shared_ptr<Z::SQLTables> Database::SQLTables() { return Sub<Recorded::SQLTables>("SQLTables"); }
std::shared_ptr<Z::DataArea> Database::DataArea() { return Sub<Recorded::DataArea>("DataArea"); }
std::shared_ptr<Z::LogArea> Database::LogArea() { return Sub<Recorded::LogArea>("LogArea"); }
std::shared_ptr<Z::Sessions> Database::Sessions() { return Sub<Recorded::Sessions>("Sessions"); }
std::shared_ptr<Z::HotStandby> Database::HotStandby() { return Sub<Recorded::HotStandby>("HotStandby"); }
std::shared_ptr<Z::Snapshot> Database::Snapshot() { return Sub<Recorded::Snapshot>("Snapshot"); }
std::shared_ptr<Z::Version> Database::Version() { return Sub<Recorded::Version>("Version"); }
std::shared_ptr<Z::History> Database::History() { return Sub<Recorded::History>("History"); }

std::shared_ptr<Z::Analyzer> Database::Analyzer() {
  const std::shared_ptr<Z::Analyzer> oAnalyzer = Sub<Recorded::Analyzer>("Analyzer");
  const Json* const pValue = Find(*Here().pValue, "Analyzer");
  return pValue != nullptr && pValue->is_object() ? oAnalyzer : nullptr;
}

Z::Error Database::LastError() {
  Check("LastError");
  return Shared().oLastError;
}

bool Database::AutoLogOff() {
  if (!Change("AutoLogOff")) return false;
  StateValue()["AutoLog"] = false;
  return true;
}

bool Database::Become(int iStatus) {
  Json& oState = StateValue();
  if (oState.value("Status", 0) != iStatus) {
    oState["StateText"] = iStatus == ZELLib3::Status::Offline ? "Offline"
                          : iStatus == ZELLib3::Status::Admin ? "Admin"
                                                              : "Online";
    oState["Status"] = iStatus;
  }
  return true;
}

}  // namespace ZELWbr3::Recorded
