#pragma once

#include "zelwbr3/ZELLib3/HotStandby.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>

namespace ZELWbr3::Postgres {

/// A primary with its standbys, or a standby with the server that it follows; the
/// master first. A slot that nobody reads any more counts as a standby that is
/// gone. Logical receivers and base backups are no standbys.
class PostgresHotStandby : public ZELLib3::HotStandby {
 public:
  explicit PostgresHotStandby(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  bool Enabled() const override { return Role(*m_oServer) != 0; }
  /// The hosts of the address as the user wrote them.
  std::string OfficialNode() const override;
  std::vector<Node> Nodes() const override;

  /// 0 none, 1 primary, 2 standby.
  static ZELLib3::Long Role(Server& oServer);

 private:
  std::shared_ptr<Server> m_oServer;
};

}  // namespace ZELWbr3::Postgres
