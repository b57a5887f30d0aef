#pragma once

#include "tests/support/TestDatabase.h"
#include "zelwbr3/base/Text.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// A test's instance with areas and parameters. Operations in Fails answer
/// false; members in Raises raise; both by "Object.Member".
class ConfiguredDatabase : public TestDatabase {
 public:
  struct TestVolume : ZELLib3::Volume {
    std::string name = "/data/DISK1", info1 = "File", info2;
    Long kind = 3, size = 1000, used = 250, free = 750, io1 = 1, io2 = 2, io3 = 3, io4 = 4;
    bool configured = true;

    std::string Name() const override { return name; }
    Long Kind() const override { return kind; }
    std::string Info1() const override { return info1; }
    std::string Info2() const override { return info2; }
    Long Size() const override { return size; }
    Long UsedSize() const override { return used; }
    Long FreeSize() const override { return free; }
    bool Configured() const override { return configured; }
    Long IOCount1() const override { return io1; }
    Long IOCount2() const override { return io2; }
    Long IOCount3() const override { return io3; }
    Long IOCount4() const override { return io4; }
  };

  struct TestVolumes : ZELLib3::Volumes {
    std::deque<TestVolume> volumes;
    Long Count() const override { return static_cast<int>(volumes.size()); }
    std::shared_ptr<ZELLib3::Volume> Item(Long l) const override {
      return std::make_shared<TestVolume>(volumes.at(static_cast<std::size_t>(l - 1)));
    }
    Long MaxCount() const override { return 11; }
    Long CurrentCount() const override { return 2; }
    Long CurrentSize() const override { return 2000; }
    Long UsedSize() const override { return 500; }
    Long TotalSize() const override { return 4000; }
    Long ReservedSize() const override { return 16; }
    Long MaxLogCount() const override { return 4; }
    Long CurrentLogCount() const override { return 1; }
    Long CurrentLogSize() const override { return 512; }
  };

  struct Change {
    ZELWbr3::Date date;
    std::string parameter, value, newValue, text;
  };

  struct TestParameter : ZELLib3::Parameter {
    ConfiguredDatabase* owner = nullptr;
    std::string name, value = "1", description = "What for", explanation, newValue = "1", newValueOnline = "1";
    Long group = 0;
    std::vector<Change> history;
    bool exists = true;

    std::string Name() const override { return name; }
    std::string Value() const override { return owner->Read("Parameter.Value", value); }
    std::string Description() const override { return description; }
    std::string Explanation() const override { return explanation; }
    Long Group() const override { return group; }
    std::string NewValue() const override { return newValue; }
    std::string NewValueOnline() const override { return newValueOnline; }
    Long HistoryCount() const override {
      return owner->Read("Parameter.HistoryCount", Long(static_cast<int>(history.size())));
    }
    ZELWbr3::Date HistoryDate(Long k) const override { return At(k).date; }
    std::string HistoryValue(Long k) const override { return At(k).value; }
    std::string HistoryNewValue(Long k) const override {
      return k == 2 ? owner->Read("Parameter.HistoryNewValue", At(k).newValue) : At(k).newValue;
    }
    bool Exists() const override { return exists; }
    const Change& At(Long k) const { return history.at(static_cast<std::size_t>(k - 1)); }
  };

  std::set<std::string, std::less<>> Fails;
  TestVolumes DataVolumes, LogVolumes;
  std::vector<int> DataSizes = {2000, 1900, 0, 0, 0, 40};
  std::vector<int> LogSizes = {500, 100, 400, 60, 30, 15};
  Long LogMode = 1, Overwrite = 1, RedoLog = 1;
  std::vector<double> LogCounters = {1234567, 8, 0, -1};
  std::deque<TestParameter> Listed;
  std::vector<Change> Changes;

  TestParameter& Add(const std::string& sName, int iGroup = 0) {
    TestParameter& oParameter = Listed.emplace_back();
    oParameter.owner = this;
    oParameter.name = sName;
    oParameter.group = iGroup;
    return oParameter;
  }
  std::size_t Uses(const std::string& sMember) const {
    return static_cast<std::size_t>(std::ranges::count(Calls, sMember));
  }

  std::shared_ptr<ZELLib3::DataArea> DataArea() override {
    struct Area : ZELLib3::DataArea {
      explicit Area(ConfiguredDatabase& o) : owner(o) {}
      ConfiguredDatabase& owner;
      std::shared_ptr<ZELLib3::Volumes> Volumes() const override {
        return std::make_shared<TestVolumes>(owner.DataVolumes);
      }
      Long Size(Long l) const override { return owner.DataSizes.at(static_cast<std::size_t>(int{l})); }
      bool Refresh() override { return owner.Do("DataArea.Refresh"); }
    };
    return std::make_shared<Area>(*this);
  }
  std::shared_ptr<ZELLib3::LogArea> LogArea() override {
    struct AreaSettings : ZELLib3::LogAreaSettings {
      explicit AreaSettings(ConfiguredDatabase& o) : owner(o) {}
      ConfiguredDatabase& owner;
      Long LogMode() const override { return owner.Read("Settings.LogMode", owner.LogMode); }
      Long Overwrite() const override { return owner.Overwrite; }
      Long RedoLog() const override { return owner.Read("Settings.RedoLog", owner.RedoLog); }
    };
    struct Area : ZELLib3::LogArea {
      explicit Area(ConfiguredDatabase& o) : owner(o) {}
      ConfiguredDatabase& owner;
      std::shared_ptr<ZELLib3::Volumes> Volumes() const override {
        return std::make_shared<TestVolumes>(owner.LogVolumes);
      }
      std::shared_ptr<ZELLib3::LogAreaSettings> Settings() const override {
        return std::make_shared<AreaSettings>(owner);
      }
      Long Size(Long l) const override { return owner.LogSizes.at(static_cast<std::size_t>(int{l})); }
      bool Refresh() override { return owner.Do("LogArea.Refresh"); }
    };
    return std::make_shared<Area>(*this);
  }
  std::shared_ptr<ZELLib3::Activity> Activity() override {
    struct Counters : ZELLib3::Activity {
      explicit Counters(ConfiguredDatabase& o) : owner(o) {}
      ConfiguredDatabase& owner;
      double LogCounter(Long l) const override { return owner.LogCounters.at(static_cast<std::size_t>(int{l})); }
      bool Refresh() override { return owner.Do("Activity.Refresh"); }
    };
    return std::make_shared<Counters>(*this);
  }
  std::shared_ptr<ZELLib3::Parameters> Parameters() override {
    struct List : ZELLib3::Parameters {
      explicit List(ConfiguredDatabase& o) : owner(o) {}
      ConfiguredDatabase& owner;
      Long Count() const override { return static_cast<int>(owner.Listed.size()); }
      std::shared_ptr<ZELLib3::Parameter> Item(Long l) const override {
        return std::make_shared<TestParameter>(owner.Listed.at(static_cast<std::size_t>(l - 1)));
      }
      std::shared_ptr<ZELLib3::Parameter> Item(const std::string& sName) const override {
        owner.Calls.push_back("Parameters.Item " + sName);
        for (const TestParameter& o : owner.Listed) {
          if (Text::Trim(o.name) == sName) return std::make_shared<TestParameter>(o);
        }
        return std::make_shared<ZELLib3::Parameter>();
      }
      bool Load() override { return owner.Do("Parameters.Load"); }
      bool Read() override { return owner.Do("Parameters.Read"); }
    };
    return std::make_shared<List>(*this);
  }
  std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() override {
    struct Walk : ZELLib3::ParameterHistory {
      explicit Walk(ConfiguredDatabase& o) : owner(o) {}
      ConfiguredDatabase& owner;
      std::size_t i = 0;
      bool Open() override { return owner.Do("ParameterHistory.Open"); }
      bool HasEntry() const override { return i < owner.Changes.size(); }
      bool MoveNext() override { return ++i < owner.Changes.size(); }
      ZELWbr3::Date Date() const override { return owner.Changes.at(i).date; }
      std::string Parameter() const override { return owner.Changes.at(i).parameter; }
      std::string Value() const override { return owner.Changes.at(i).value; }
      std::string NewValue() const override { return owner.Changes.at(i).newValue; }
      std::string Text() const override { return owner.Read("ParameterHistory.Text", owner.Changes.at(i).text); }
    };
    return std::make_shared<Walk>(*this);
  }

 private:
  bool Do(const std::string& sOperation) {
    Calls.push_back(sOperation);
    return !Fails.contains(sOperation);
  }
};

}  // namespace ZELWbr3::Testing
