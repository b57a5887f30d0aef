#pragma once

#include "zelwbr3/ZELLib3/SysInfos.h"
#include "zelwbr3/instances/common/rows/RowSourceOf.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>
#include <vector>

namespace ZELWbr3::Postgres {

/// One view of what a server knows about itself, read afresh by each Open. Its rows
/// are of one moment, and at most MostRows.
class PostgresSysInfo : public Instances::RowSourceOf<ZELLib3::SysInfo, Server, Connection> {
 public:
  static constexpr int MostRows = 20000;
  /// What the names of the views' queries begin with.
  static constexpr const char* Prefix = "view.";

  /// iIndex is the view's position in the list, from 1. oQuery lives as long as the
  /// program.
  PostgresSysInfo(std::shared_ptr<Server> oServer, const Query& oQuery, ZELLib3::Long iIndex)
      : RowSourceOf(std::move(oServer)), m_oQuery(oQuery), m_iIndex(iIndex) {}

  ZELLib3::Long Index() const override { return m_iIndex; }
  std::string Name() const override;
  std::string Description() const override { return m_oQuery.Title; }
  bool IsRecord() const override { return m_oQuery.IsRecord; }

 protected:
  std::unique_ptr<Reader> MakeReader(Connection& oConnection) override;

 private:
  const Query& m_oQuery;
  ZELLib3::Long m_iIndex;
};

/// The views that the server's version has and the user may read; none while nobody
/// has told what they are.
class PostgresSysInfos : public ZELLib3::SysInfos {
 public:
  explicit PostgresSysInfos(std::shared_ptr<Server> oServer);

  ZELLib3::Integer Count() const override { return m_views.size(); }
  std::shared_ptr<ZELLib3::SysInfo> Item(ZELLib3::Long iIndex) const override;
  bool Refresh() override;

 private:
  std::shared_ptr<Server> m_oServer;
  std::vector<const Query*> m_views;
};

}  // namespace ZELWbr3::Postgres
