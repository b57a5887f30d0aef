#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

#include <array>

namespace ZELLib3 {

/// The instance's operational state and usage. Sizes are pages, rates percent
/// (0 to 100). Except for Status and StateText, the figures are only meaningful
/// while InfoAvailable is true.
class ZELWBR3_EXPORT StateInfo {
 public:
  /// Nine limits in percent: cold, medium and hot, for the data, the log and
  /// the session bar.
  using Thresholds = std::array<Long, 9>;

  virtual ~StateInfo() = default;

  /// Operational state code, 0 to 5: 2 offline, 3 admin, 4 between admin and
  /// online, 5 online; anything else is a state without figures.
  virtual Long Status() const { return 0; }
  virtual std::string StateText() const { return {}; }
  virtual bool InfoAvailable() const { return false; }
  virtual Long DataUsed() const { return 0; }
  virtual Long DataPerm() const { return 0; }
  virtual Long DataTemp() const { return 0; }
  virtual Long DataPercent() const { return 0; }
  virtual Long LogUsed() const { return 0; }
  virtual Long LogPercent() const { return 0; }
  virtual Long SessionsUsed() const { return 0; }
  virtual Long SessionPercent() const { return 0; }
  virtual Long CacheHitRate() const { return 0; }
  virtual Long DataTotal() const { return 0; }
  virtual Long LogTotal() const { return 0; }
  virtual Long SessionsMax() const { return 0; }
  virtual bool DataFull() const { return false; }
  /// The command monitor is on.
  virtual bool CmdMon() const { return false; }
  /// Automatic log backup is on.
  virtual bool AutoLog() const { return false; }
  virtual Long BadIndexes() const { return 0; }
  virtual Long BadVolumes() const { return 0; }
  virtual Date StartOn() const { return {}; }
  virtual Long CacheUsed() const { return 0; }
  virtual Long CacheTotal() const { return 0; }
  /// Object-store memory analysis is on.
  virtual bool OMSMemAna() const { return false; }
  /// The resource monitor is on.
  virtual bool ResMon() const { return false; }
  virtual bool LogFull() const { return false; }
  /// Automatic extension of the data area is on.
  virtual bool AutoExtend() const { return false; }
  virtual bool AnyAreaFull() const { return false; }
  /// The backup history has been lost.
  virtual bool HistoryLost() const { return false; }
  virtual Thresholds BarThresholds() const { return {}; }
  virtual bool DBTrace() const { return false; }
  /// 0 unknown, 1 off, 2 on.
  virtual Long AutoUpdateStatistics() const { return 0; }
};

}  // namespace ZELLib3
