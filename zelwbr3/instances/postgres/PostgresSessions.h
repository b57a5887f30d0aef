#pragma once

#include "zelwbr3/instances/common/SessionList.h"
#include "zelwbr3/instances/postgres/server/Server.h"

namespace ZELWbr3::Postgres {

/// The sessions of clients and standbys as of the last Refresh, the oldest first.
/// Each has its name in the server's log, then process number, program and client,
/// user and database, since when, and what it does or waits for. Without the right
/// of pg_monitor, others' sessions have number, user and database only.
class PostgresSessions : public Instances::SessionList {
 public:
  explicit PostgresSessions(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  bool Refresh() override;

 private:
  std::vector<Instances::ListedSession::Entry> Read() const override;

  std::shared_ptr<Server> m_oServer;
};

}  // namespace ZELWbr3::Postgres
