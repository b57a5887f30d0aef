#pragma once

#include "zelwbr3/ZELLib3/LogArea.h"
#include "zelwbr3/ZELLib3/LogSettings.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>

namespace ZELWbr3::Postgres {

/// The write-ahead log: the folder pg_wal as the one volume.
class PostgresLogArea : public ZELLib3::LogArea {
 public:
  explicit PostgresLogArea(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  /// Pages written are those of the log, from 14 on.
  std::shared_ptr<ZELLib3::Volumes> Volumes() const override;
  /// Single, overwritten when nothing archives it, activated.
  std::shared_ptr<ZELLib3::LogAreaSettings> Settings() const override;
  /// 0 as StateInfo::LogTotal, 1 a segment, 2 what is left of 0, 3 as
  /// StateInfo::LogUsed, 4 not yet archived, 5 since the last archived segment.
  ZELLib3::Long Size(ZELLib3::Long iIndex) const override;
  bool Refresh() override { return m_oServer->RefreshFigures(); }

 private:
  std::shared_ptr<Server> m_oServer;
};

/// Whether the log is overwritten without anybody keeping it: nothing archives, no
/// slot and no standby is there. It is always written.
class PostgresLogSettings : public ZELLib3::LogSettings {
 public:
  explicit PostgresLogSettings(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  ZELLib3::Long AutoOverwrite() const override;
  ZELLib3::Long WriteOff() const override;

 private:
  std::shared_ptr<Server> m_oServer;
};

}  // namespace ZELWbr3::Postgres
