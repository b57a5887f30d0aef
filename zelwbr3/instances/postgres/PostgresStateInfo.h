#pragma once

#include "zelwbr3/ZELLib3/StateInfo.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>

namespace ZELWbr3::Postgres {

/// State and usage of a server. The figures are read on first use and are then
/// those of one moment. What a server does not have (a command history, an object
/// store, the loss of its backup history) reads as off or none.
class PostgresStateInfo : public ZELLib3::StateInfo {
 public:
  explicit PostgresStateInfo(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  ZELLib3::Long Status() const override { return Look().Status; }
  std::string StateText() const override { return Look().StateText; }
  bool InfoAvailable() const override { return Figures() != nullptr; }

  /// What is used and, on a server of this machine, what its disks have left; a
  /// server has no limit of its own.
  ZELLib3::Long DataTotal() const override;
  /// All databases that the user may look at, and temporary files.
  ZELLib3::Long DataUsed() const override;
  ZELLib3::Long DataPerm() const override;
  /// Files of sorts and hashes that are under way; 12 and later, with the right.
  ZELLib3::Long DataTemp() const override;
  ZELLib3::Long DataPercent() const override;
  /// Less than one segment of the log is left on a disk; false when that cannot be
  /// seen.
  bool DataFull() const override;
  bool AutoExtend() const override { return true; }

  /// max_wal_size, or what is needed when that is more.
  ZELLib3::Long LogTotal() const override;
  /// The log from the oldest position that a restart, a slot, wal_keep_size or the
  /// archive still needs.
  ZELLib3::Long LogUsed() const override;
  ZELLib3::Long LogPercent() const override;
  bool LogFull() const override;
  bool AnyAreaFull() const override { return DataFull() || LogFull(); }
  /// archive_mode is on. A standby's log is kept by its primary.
  bool AutoLog() const override;

  ZELLib3::Long SessionsUsed() const override;
  /// max_connections; the last few are superusers' only.
  ZELLib3::Long SessionsMax() const override;
  ZELLib3::Long SessionPercent() const override;

  /// Pages found in shared_buffers, of all that were asked for since the counters
  /// were reset; 100 before the first.
  ZELLib3::Long CacheHitRate() const override;
  /// 0 = unknown: needs the extension pg_buffercache, and 16 or later.
  ZELLib3::Long CacheUsed() const override;
  ZELLib3::Long CacheTotal() const override;

  /// Slow statements are logged.
  bool CmdMon() const override;
  /// pg_stat_statements counts.
  bool ResMon() const override;
  /// All statements are logged.
  bool DBTrace() const override;
  /// Invalid indexes of this database that nobody is building.
  ZELLib3::Long BadIndexes() const override;
  /// Pages whose checksum was wrong; 12 and later.
  ZELLib3::Long BadVolumes() const override;
  ZELLib3::Date StartOn() const override;
  Thresholds BarThresholds() const override;
  ZELLib3::Long AutoUpdateStatistics() const override;

 private:
  const Reading& Look() const;
  const Postgres::Figures* Figures() const { return Look().Figures.get(); }
  ZELLib3::Long Pages(std::int64_t lBytes) const { return m_oServer->Pages(lBytes); }

  std::shared_ptr<Server> m_oServer;
  mutable std::shared_ptr<const Reading> m_oReading;
};

}  // namespace ZELWbr3::Postgres
