#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// What a test changes in a recording, each "Path = VALUE": a path such as
/// "StateInfo.Status" or "DataArea.Volumes.Items.0.Size" ("-" for a new entry
/// at the end), below "Database" unless it begins with "LastError", "fails" or
/// "raises", and a value as in JSON or hexadecimal.
using Changes = std::vector<std::string>;

/// One of tests/recordings, by its name, with some values changed; an empty
/// recording when it has no name. It can be changed further while it is shown,
/// and tells what it is asked. Operations that fail leave an error, "SQL
/// error", unless the recording says otherwise.
class ChangedRecording : public ZELLib3::Database {
 public:
  explicit ChangedRecording(std::string sRecording, const Changes& changes = {}, Recorded::CallObserver oObserver = {});

  /// Changes on top of all before; what operations did to the state is undone.
  void Change(const Changes& changes);

  /// Called before a member of the instance is read, with its name.
  std::function<void(const std::string& sMember)> OnRead = [](const std::string&) {};

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override { return Asked("StateInfo").StateInfo(); }
  std::shared_ptr<ZELLib3::Parameters> Parameters() override { return Asked("Parameters").Parameters(); }
  std::shared_ptr<ZELLib3::LogSettings> LogSettings() override { return Asked("LogSettings").LogSettings(); }
  std::shared_ptr<ZELLib3::SysInfos> SysInfos() override { return Asked("SysInfos").SysInfos(); }
  std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() override {
    return Asked("ParameterHistory").ParameterHistory();
  }
  std::shared_ptr<ZELLib3::Caches> Caches() override { return Asked("Caches").Caches(); }
  std::shared_ptr<ZELLib3::Activity> Activity() override { return Asked("Activity").Activity(); }
  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override { return Asked("Analyzer").Analyzer(); }
  std::shared_ptr<ZELLib3::SQLTables> SQLTables() override { return Asked("SQLTables").SQLTables(); }
  std::shared_ptr<ZELLib3::DataArea> DataArea() override { return Asked("DataArea").DataArea(); }
  std::shared_ptr<ZELLib3::LogArea> LogArea() override { return Asked("LogArea").LogArea(); }
  std::shared_ptr<ZELLib3::Sessions> Sessions() override { return Asked("Sessions").Sessions(); }
  std::shared_ptr<ZELLib3::HotStandby> HotStandby() override { return Asked("HotStandby").HotStandby(); }
  std::shared_ptr<ZELLib3::Snapshot> Snapshot() override { return Asked("Snapshot").Snapshot(); }
  std::shared_ptr<ZELLib3::Version> Version() override { return Asked("Version").Version(); }
  std::shared_ptr<ZELLib3::History> History() override { return Asked("History").History(); }
  ZELLib3::Error LastError() override { return Asked("LastError").LastError(); }
  std::string InstanceName() override { return Asked("InstanceName").InstanceName(); }
  ZELLib3::Long InstanceNumber() override { return Asked("InstanceNumber").InstanceNumber(); }
  std::string OSVersion() override { return Asked("OSVersion").OSVersion(); }
  std::string OSName() override { return Asked("OSName").OSName(); }
  ZELLib3::Long InstanceType() override { return Asked("InstanceType").InstanceType(); }
  ZELLib3::Long PlatformType() override { return Asked("PlatformType").PlatformType(); }
  bool Connected() override { return Asked("Connected").Connected(); }
  ZELLib3::Long PageSize() override { return Asked("PageSize").PageSize(); }
  std::string RunDirectory() override { return Asked("RunDirectory").RunDirectory(); }
  ZELLib3::Long HotStandbyRole() override { return Asked("HotStandbyRole").HotStandbyRole(); }
  bool HotStandbyWarning() override { return Asked("HotStandbyWarning").HotStandbyWarning(); }
  bool Shutdown() override { return m_oOpened->Shutdown(); }
  bool ShutdownQuick() override { return m_oOpened->ShutdownQuick(); }
  bool Admin() override { return m_oOpened->Admin(); }
  bool Online() override { return m_oOpened->Online(); }
  bool RestartUntil(const ZELLib3::Date& dUntil) override { return m_oOpened->RestartUntil(dUntil); }
  bool AutoLogOff() override { return m_oOpened->AutoLogOff(); }

 private:
  ZELLib3::Database& Asked(const char* sMember) {
    OnRead(sMember);
    return *m_oOpened;
  }

  std::string m_sRecording;
  Changes m_changes;
  Recorded::CallObserver m_oObserver;
  std::shared_ptr<ZELLib3::Database> m_oOpened;
};

}  // namespace ZELWbr3::Testing
