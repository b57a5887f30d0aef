#pragma once

#include "zelwbr3/ZELLib3/Activity.h"
#include "zelwbr3/ZELLib3/Analyzer.h"
#include "zelwbr3/ZELLib3/Caches.h"
#include "zelwbr3/ZELLib3/DataArea.h"
#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/ZELLib3/History.h"
#include "zelwbr3/ZELLib3/HotStandby.h"
#include "zelwbr3/ZELLib3/LogArea.h"
#include "zelwbr3/ZELLib3/LogSettings.h"
#include "zelwbr3/ZELLib3/ParameterHistory.h"
#include "zelwbr3/ZELLib3/Parameters.h"
#include "zelwbr3/ZELLib3/SQLTables.h"
#include "zelwbr3/ZELLib3/Sessions.h"
#include "zelwbr3/ZELLib3/Snapshot.h"
#include "zelwbr3/ZELLib3/StateInfo.h"
#include "zelwbr3/ZELLib3/SysInfos.h"
#include "zelwbr3/ZELLib3/Trouble.h"
#include "zelwbr3/ZELLib3/Version.h"
#include "zelwbr3/base/Export.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELLib3 {

/// One database instance, as the pages read it.
///
/// Every member has a body that answers "not available", so an instance only
/// overrides what it knows and invents nothing. Sub-objects are fresh on every
/// read and never null, except Analyzer. A member that cannot be read raises
/// InstanceError; an operation that fails returns false and sets LastError.
/// One call at a time: reads come on the user-interface thread. Operations that
/// change the instance may come on another thread; nothing is read while one
/// runs. A read that may take long runs its waiting through the WaitRunner.
class ZELWBR3_EXPORT Database {
 public:
  virtual ~Database() = default;

  virtual std::shared_ptr<ZELLib3::StateInfo> StateInfo() { return std::make_shared<ZELLib3::StateInfo>(); }
  virtual std::shared_ptr<ZELLib3::Parameters> Parameters() { return std::make_shared<ZELLib3::Parameters>(); }
  virtual std::shared_ptr<ZELLib3::LogSettings> LogSettings() { return std::make_shared<ZELLib3::LogSettings>(); }
  virtual std::shared_ptr<ZELLib3::SysInfos> SysInfos() { return std::make_shared<ZELLib3::SysInfos>(); }
  virtual std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() {
    return std::make_shared<ZELLib3::ParameterHistory>();
  }
  virtual std::shared_ptr<ZELLib3::Caches> Caches() { return std::make_shared<ZELLib3::Caches>(); }
  virtual std::shared_ptr<ZELLib3::Activity> Activity() { return std::make_shared<ZELLib3::Activity>(); }
  /// Null if nothing is known about an analyzer.
  virtual std::shared_ptr<ZELLib3::Analyzer> Analyzer() { return nullptr; }
  virtual std::shared_ptr<ZELLib3::SQLTables> SQLTables() { return std::make_shared<ZELLib3::SQLTables>(); }
  virtual std::shared_ptr<ZELLib3::DataArea> DataArea() { return std::make_shared<ZELLib3::DataArea>(); }
  virtual std::shared_ptr<ZELLib3::LogArea> LogArea() { return std::make_shared<ZELLib3::LogArea>(); }
  virtual std::shared_ptr<ZELLib3::Sessions> Sessions() { return std::make_shared<ZELLib3::Sessions>(); }
  virtual std::shared_ptr<ZELLib3::HotStandby> HotStandby() { return std::make_shared<ZELLib3::HotStandby>(); }
  virtual std::shared_ptr<ZELLib3::Snapshot> Snapshot() { return std::make_shared<ZELLib3::Snapshot>(); }
  /// The error of the last failed call.
  virtual Error LastError() { return {}; }
  virtual std::string InstanceName() { return {}; }
  /// Shown in brackets after the name if above 0.
  virtual Long InstanceNumber() { return 0; }
  virtual std::shared_ptr<ZELLib3::Version> Version() { return std::make_shared<ZELLib3::Version>(); }
  virtual std::string OSVersion() { return {}; }
  virtual std::string OSName() { return {}; }
  /// 1 = an instance with an object store.
  virtual Long InstanceType() { return 0; }
  /// 1 = a platform with address-windowing memory.
  virtual Long PlatformType() { return 0; }
  virtual bool Connected() { return false; }
  /// What is counted (activity, caches and their hit rate, since when) is of this
  /// connection only: the instance counts for each one by itself.
  virtual bool CountsPerConnection() { return false; }
  /// Bytes.
  virtual Long PageSize() { return 0; }
  virtual std::string RunDirectory() { return {}; }
  /// 0 = no hot standby.
  virtual Long HotStandbyRole() { return 0; }
  virtual bool HotStandbyWarning() { return false; }

  /// What the instance notices about itself at the moment, the worst first.
  virtual std::vector<Trouble> Troubles() { return {}; }

  virtual std::shared_ptr<ZELLib3::History> History() { return std::make_shared<ZELLib3::History>(); }

  /// Asks the call that runs on another thread at the moment to end soon, with an
  /// error. The one member that may be called while another one runs; does
  /// nothing when none does.
  virtual void Interrupt() {}
  /// Runs a part of a read on another thread and returns when it has ended;
  /// rethrows what it throws. May end the read by throwing something of its own,
  /// but not before the part has ended.
  using Runner = std::function<void(const std::function<void()>& oPart)>;
  /// Sets how parts that may wait (for a server, a lock, a long statement) are
  /// run from now on, so that the program stays alive meanwhile. Empty, as at the
  /// beginning: by the reading thread itself. An instance that answers at once
  /// does not need it.
  virtual void WaitRunner(Runner) {}

  /// The operations that change the operational state. Shutdown waits for
  /// running transactions, ShutdownQuick aborts them.
  virtual bool Shutdown() { return false; }
  virtual bool ShutdownQuick() { return false; }
  virtual bool Admin() { return false; }
  virtual bool Online() { return false; }
  /// Restarts with the data as of a point in time.
  virtual bool RestartUntil(const Date&) { return false; }
  /// Turns automatic log backup off.
  virtual bool AutoLogOff() { return false; }
};

}  // namespace ZELLib3
