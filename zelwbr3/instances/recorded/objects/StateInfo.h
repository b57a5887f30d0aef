#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class StateInfo final : public Of<ZELLib3::StateInfo> {
 public:
  using Of::Of;

  Long Status() const override { return Get<Long>("Status"); }
  std::string StateText() const override { return Get<std::string>("StateText"); }
  bool InfoAvailable() const override { return Get<bool>("InfoAvailable"); }
  Long DataUsed() const override { return Get<Long>("DataUsed"); }
  Long DataPerm() const override { return Get<Long>("DataPerm"); }
  Long DataTemp() const override { return Get<Long>("DataTemp"); }
  Long DataPercent() const override { return Get<Long>("DataPercent"); }
  Long LogUsed() const override { return Get<Long>("LogUsed"); }
  Long LogPercent() const override { return Get<Long>("LogPercent"); }
  Long SessionsUsed() const override { return Get<Long>("SessionsUsed"); }
  Long SessionPercent() const override { return Get<Long>("SessionPercent"); }
  Long CacheHitRate() const override { return Get<Long>("CacheHitRate"); }
  Long DataTotal() const override { return Get<Long>("DataTotal"); }
  Long LogTotal() const override { return Get<Long>("LogTotal"); }
  Long SessionsMax() const override { return Get<Long>("SessionsMax"); }
  bool DataFull() const override { return Get<bool>("DataFull"); }
  bool CmdMon() const override { return Get<bool>("CmdMon"); }
  bool AutoLog() const override { return Get<bool>("AutoLog"); }
  Long BadIndexes() const override { return Get<Long>("BadIndexes"); }
  Long BadVolumes() const override { return Get<Long>("BadVolumes"); }
  ZELWbr3::Date StartOn() const override { return Get<ZELWbr3::Date>("StartOn"); }
  Long CacheUsed() const override { return Get<Long>("CacheUsed"); }
  Long CacheTotal() const override { return Get<Long>("CacheTotal"); }
  bool OMSMemAna() const override { return Get<bool>("OMSMemAna"); }
  bool ResMon() const override { return Get<bool>("ResMon"); }
  bool LogFull() const override { return Get<bool>("LogFull"); }
  bool AutoExtend() const override { return Get<bool>("AutoExtend"); }
  bool AnyAreaFull() const override { return Get<bool>("AnyAreaFull"); }
  bool HistoryLost() const override { return Get<bool>("HistoryLost"); }
  Thresholds BarThresholds() const override { return Get<Thresholds>("BarThresholds"); }
  bool DBTrace() const override { return Get<bool>("DBTrace"); }
  Long AutoUpdateStatistics() const override { return Get<Long>("AutoUpdateStatistics"); }
};

}  // namespace ZELWbr3::Recorded
