#pragma once

#include "zelwbr3/instances/common/ListedHistory.h"
#include "zelwbr3/instances/postgres/backups/Backup.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>
#include <vector>

namespace ZELWbr3::Postgres {

/// The backups of a server from all sources, as of Open.
class PostgresHistory : public Instances::ListedHistory {
 public:
  explicit PostgresHistory(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

 private:
  bool Load() override {
    m_oBackups.clear();
    try {
      m_oBackups = BackupsOf(*m_oServer);
      return true;
    } catch (const ZELLib3::InstanceError& oError) {
      m_oServer->LastError(oError.ErrorObject());
      return false;
    }
  }
  std::size_t Count() const override { return m_oBackups.size(); }
  ZELLib3::HistoryItem Item(std::size_t i) const override { return m_oBackups[i].Item; }
  bool Refuse(const char* sWhy) override { return m_oServer->Refuse(sWhy); }

  std::shared_ptr<Server> m_oServer;
  std::vector<Backup> m_oBackups;
};

}  // namespace ZELWbr3::Postgres
