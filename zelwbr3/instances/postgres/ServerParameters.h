#pragma once

#include "zelwbr3/instances/common/settings/ParameterList.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>

namespace ZELWbr3::Postgres {

/// The parameters of a server, as pg_settings and the configuration files have
/// them. What this connection has set for itself is shown as it is for others.
///
/// A value that waits for a restart shows as the new one where the user may read
/// the configuration files, otherwise only that there is one.
class ServerParameters : public Instances::ParameterList {
 public:
  explicit ServerParameters(std::shared_ptr<Server> oServer)
      : ParameterList(oServer->Options().Observations, oServer->Options().ReadingLifetime),
        m_oServer(std::move(oServer)) {}

 protected:
  std::optional<std::vector<Entry>> ReadEntries() override;
  std::string Key() override { return m_oServer->Key(); }
  ZELLib3::Error LastError() override { return m_oServer->LastError(); }
  void LastError(const ZELLib3::Error& oError) override { m_oServer->LastError(oError); }

 private:
  std::shared_ptr<Server> m_oServer;
};

}  // namespace ZELWbr3::Postgres
