#pragma once

#include "zelwbr3/ZELLib3/DataArea.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>

namespace ZELWbr3::Postgres {

/// The tablespaces as volumes. On a server of this machine a volume is as large as
/// what it uses and what its disk has left; several on one disk share that, and
/// the area counts it once. One whose size the user may not know has the size 0.
class PostgresDataArea : public ZELLib3::DataArea {
 public:
  explicit PostgresDataArea(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  /// Pages read are those of this database's tables and indexes; writes are not
  /// counted by tablespace.
  std::shared_ptr<ZELLib3::Volumes> Volumes() const override;
  /// Usable and permanently usable is what the disks hold; nothing is reserved.
  ZELLib3::Long Size(ZELLib3::Long iIndex) const override;
  bool Refresh() override { return m_oServer->RefreshFigures(); }

 private:
  std::shared_ptr<Server> m_oServer;
};

}  // namespace ZELWbr3::Postgres
