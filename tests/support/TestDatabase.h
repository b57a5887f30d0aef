#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// An instance whose figures a test sets; a small one, online, of the newest
/// version and without trouble unless changed.
class TestDatabase : public ZELLib3::Database {
 public:
  /// Members, by name, that raise an error when they are read.
  std::set<std::string, std::less<>> Raises;
  /// Operations and reads that were asked for, by name, in order.
  std::vector<std::string> Calls;

  struct TestState : ZELLib3::StateInfo {
    explicit TestState(TestDatabase& oOwner) : owner(oOwner) {}

    TestDatabase& owner;
    Long status = 5;
    std::string stateText = "Online";
    bool infoAvailable = true;
    Long dataUsed = 100, dataPerm = 80, dataTemp = 20, dataPercent = 10, dataTotal = 1000;
    Long logUsed = 50, logPercent = 5, logTotal = 500;
    Long sessionsUsed = 3, sessionPercent = 6, sessionsMax = 50;
    Long cacheHitRate = 99, cacheUsed = 64, cacheTotal = 128;
    Long badIndexes = 0, badVolumes = 0, autoUpdateStatistics = 2;
    bool dataFull = false, logFull = false, anyAreaFull = false, historyLost = false;
    bool autoLog = false, cmdMon = false, resMon = false, omsMemAna = false, dbTrace = false, autoExtend = false;
    Date startOn{2026, 1, 2, 3, 4, 5};
    Thresholds thresholds = {70, 80, 95, 60, 75, 90, 50, 65, 85};

    Long Status() const override { return owner.Read("Status", status); }
    std::string StateText() const override { return stateText; }
    bool InfoAvailable() const override { return owner.Read("InfoAvailable", infoAvailable); }
    Long DataUsed() const override { return dataUsed; }
    Long DataPerm() const override { return dataPerm; }
    Long DataTemp() const override { return dataTemp; }
    Long DataPercent() const override { return dataPercent; }
    Long LogUsed() const override { return logUsed; }
    Long LogPercent() const override { return logPercent; }
    Long SessionsUsed() const override { return sessionsUsed; }
    Long SessionPercent() const override { return sessionPercent; }
    Long CacheHitRate() const override { return owner.Read("CacheHitRate", cacheHitRate); }
    Long DataTotal() const override { return dataTotal; }
    Long LogTotal() const override { return owner.Read("LogTotal", logTotal); }
    Long SessionsMax() const override { return sessionsMax; }
    bool DataFull() const override { return dataFull; }
    bool CmdMon() const override { return cmdMon; }
    bool AutoLog() const override { return autoLog; }
    Long BadIndexes() const override { return badIndexes; }
    Long BadVolumes() const override { return badVolumes; }
    Date StartOn() const override { return startOn; }
    Long CacheUsed() const override { return cacheUsed; }
    Long CacheTotal() const override { return cacheTotal; }
    bool OMSMemAna() const override { return omsMemAna; }
    bool ResMon() const override { return resMon; }
    bool LogFull() const override { return logFull; }
    bool AutoExtend() const override { return autoExtend; }
    bool AnyAreaFull() const override { return anyAreaFull; }
    bool HistoryLost() const override { return historyLost; }
    Thresholds BarThresholds() const override { return thresholds; }
    bool DBTrace() const override { return dbTrace; }
    Long AutoUpdateStatistics() const override { return autoUpdateStatistics; }
  };
  struct TestLogSettings : ZELLib3::LogSettings {
    Long autoOverwrite = 1, writeOff = 1;
    Long AutoOverwrite() const override { return autoOverwrite; }
    Long WriteOff() const override { return writeOff; }
  };
  struct TestHotStandby : ZELLib3::HotStandby {
    bool enabled = false;
    std::string officialNode = "virtual";
    std::vector<Node> nodes;
    bool Enabled() const override { return enabled; }
    std::string OfficialNode() const override { return officialNode; }
    std::vector<Node> Nodes() const override { return nodes; }
  };
  struct TestSnapshot : ZELLib3::Snapshot {
    bool exists = false;
    std::string ID() const override { return "SNAP 7"; }
    Date Created() const override { return {2026, 5, 6, 7, 8, 9}; }
    bool Exists() const override { return exists; }
    Long Size() const override { return 256; }
  };
  struct TestAnalyzer : ZELLib3::Analyzer {
    Long state = 1;
    Long State() const override { return state; }
  };

  std::shared_ptr<TestState> State = std::make_shared<TestState>(*this);
  std::shared_ptr<TestLogSettings> Log = std::make_shared<TestLogSettings>();
  std::shared_ptr<TestHotStandby> Standby = std::make_shared<TestHotStandby>();
  std::shared_ptr<TestSnapshot> Snap = std::make_shared<TestSnapshot>();
  std::shared_ptr<TestAnalyzer> Ana = std::make_shared<TestAnalyzer>();
  std::string Name = "DEMO";
  Long Number = 0, Type = 0, Role = 0;
  Long VersionNumber = 0x07060010, ReleaseNumber = 0x07060000, BuildNumber = 0x07060010;
  bool IsConnected = true, StandbyWarning = false;

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override { return Read("StateInfo", State); }
  std::shared_ptr<ZELLib3::LogSettings> LogSettings() override { return Read("LogSettings", Log); }
  std::shared_ptr<ZELLib3::HotStandby> HotStandby() override { return Read("HotStandby", Standby); }
  std::shared_ptr<ZELLib3::Snapshot> Snapshot() override { return Read("Snapshot", Snap); }
  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override { return Read("Analyzer", Ana); }
  std::shared_ptr<ZELLib3::Version> Version() override {
    struct TestVersion : ZELLib3::Version {
      explicit TestVersion(const TestDatabase& o)
          : number(o.VersionNumber), release(o.ReleaseNumber), build(o.BuildNumber) {}
      Long number, release, build;
      std::string Text() const override { return "Kernel 7"; }
      Long Major() const override { return number / 0x1000000; }
      Long Minor() const override { return number / 0x10000 % 0x100; }
      Long Number() const override { return number; }
      Long Release() const override { return release; }
      Long BuildVersion() const override { return build; }
    };
    return Read("Version", std::make_shared<TestVersion>(*this));
  }
  ZELLib3::Error LastError() override { return {-24988, "SQL error"}; }
  std::string InstanceName() override { return Read("InstanceName", Name); }
  Long InstanceNumber() override { return Number; }
  std::string OSVersion() override { return "6.1"; }
  std::string OSName() override { return "Linux"; }
  Long InstanceType() override { return Type; }
  bool Connected() override { return IsConnected; }
  Long PageSize() override { return 8192; }
  std::string RunDirectory() override { return "/var/lib/demo"; }
  Long HotStandbyRole() override { return Role; }
  bool HotStandbyWarning() override { return StandbyWarning; }

 protected:
  template <typename Value>
  Value Read(std::string_view sMember, Value oValue) {
    Calls.emplace_back(sMember);
    if (Raises.contains(sMember)) throw ZELLib3::InstanceError({-1000, std::string(sMember) + " cannot be read"});
    return oValue;
  }
};

}  // namespace ZELWbr3::Testing
