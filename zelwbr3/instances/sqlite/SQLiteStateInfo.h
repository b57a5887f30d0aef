#pragma once

#include "zelwbr3/ZELLib3/StateInfo.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <memory>

namespace ZELWbr3::SQLite {

/// State and usage of a database file. The figures are read on first use and
/// are then those of one moment; reading a damaged file raises
/// ZELLib3::InstanceError. What a file does not have (a backup of its log,
/// monitors, traces, bad volumes) reads as off or none.
class SQLiteStateInfo : public ZELLib3::StateInfo {
 public:
  explicit SQLiteStateInfo(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  ZELLib3::Long Status() const override;
  std::string StateText() const override;
  /// Online, and no other connection locks all others out.
  bool InfoAvailable() const override { return Figures() != nullptr; }

  /// The pages of the file, free ones included: a file grows by itself, so this
  /// is what it has got, not what it may grow to.
  ZELLib3::Long DataTotal() const override;
  /// The pages that are not free.
  ZELLib3::Long DataUsed() const override;
  ZELLib3::Long DataPerm() const override { return DataUsed(); }
  /// The temporary database of this connection. Others keep their own.
  ZELLib3::Long DataTemp() const override;
  ZELLib3::Long DataPercent() const override;
  /// The file has as many pages as it may have, and none of them is free.
  bool DataFull() const override;
  bool AutoExtend() const override { return true; }

  /// Frames that the log file has room for, but at least the number at which a
  /// writer runs a checkpoint: so percentages tell how near that is, and 100
  /// that checkpoints do not get through.
  ZELLib3::Long LogTotal() const override;
  /// Frames that are still needed.
  ZELLib3::Long LogUsed() const override;
  ZELLib3::Long LogPercent() const override;
  bool AnyAreaFull() const override { return DataFull(); }

  /// Processes that hold the file open.
  ZELLib3::Long SessionsUsed() const override { return Look().Sessions(); }
  /// Processes that the system can run.
  ZELLib3::Long SessionsMax() const override;
  ZELLib3::Long SessionPercent() const override;

  /// The page cache of this connection. Others keep their own.
  ZELLib3::Long CacheHitRate() const override;
  ZELLib3::Long CacheUsed() const override;
  ZELLib3::Long CacheTotal() const override;

  /// When this connection was opened.
  ZELLib3::Date StartOn() const override;
  Thresholds BarThresholds() const override;
  /// 1 (off) without statistics: SQLite never collects them by itself. 0
  /// (unknown) with: the file does not say who collects them, nor when.
  ZELLib3::Long AutoUpdateStatistics() const override;

 private:
  const Reading& Look() const;
  const Usage* Figures() const { return Look().Figures(); }

  std::shared_ptr<InstanceFile> m_oFile;
  mutable std::shared_ptr<const Reading> m_oReading;
};

}  // namespace ZELWbr3::SQLite
