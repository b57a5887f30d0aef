#include "zelwbr3/instances/postgres/PostgresSysInfos.h"

#include "zelwbr3/instances/postgres/rows/CellColumns.h"
#include "zelwbr3/instances/postgres/rows/RowReader.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace ZELWbr3::Postgres {

std::string PostgresSysInfo::Name() const {
  std::string sName = m_oQuery.Name.substr(std::string_view(Prefix).size());
  std::ranges::replace(sName, '_', ' ');
  return sName;
}

std::unique_ptr<RowReader> PostgresSysInfo::MakeReader(Connection& oConnection) {
  const std::string sAsked = "reading " + Name();
  // Another server may have taken the place of the one that had the list.
  const Query* pQuery = Queries::Find(m_oQuery.Name, Source().Rights());
  if (pQuery == nullptr) {
    throw ServerError({}, Source().Name(), sAsked, "the server has no such view, or no longer for this user");
  }
  std::optional<CellColumns> oCells;
  std::vector<Instances::RowTexts> rows;
  oConnection.Stream("SELECT * FROM (" + pQuery->For(Source().Rights()) + ") AS r LIMIT " + std::to_string(MostRows),
                     sAsked, {}, [&](const Result& oPart) {
                       if (!oCells) oCells.emplace(oPart);
                       if (oPart.Rows() > 0) rows.push_back(oCells->RowOf(oPart, 0));
                       return true;
                     });
  return std::make_unique<ListReader>(oCells->Headings(), std::move(rows));
}

PostgresSysInfos::PostgresSysInfos(std::shared_ptr<Server> oServer)
    : m_oServer(std::move(oServer)), m_views(Queries::Usable(PostgresSysInfo::Prefix, m_oServer->Rights())) {}

std::shared_ptr<ZELLib3::SysInfo> PostgresSysInfos::Item(ZELLib3::Long iIndex) const {
  if (iIndex < 1 || iIndex > Count()) {
    throw std::out_of_range("There is no view " + std::to_string(std::int32_t{iIndex}));
  }
  return std::make_shared<PostgresSysInfo>(m_oServer, *m_views[static_cast<std::size_t>(iIndex - 1)], iIndex);
}

bool PostgresSysInfos::Refresh() {
  const bool bConnected = m_oServer->Refresh();
  m_views = Queries::Usable(PostgresSysInfo::Prefix, m_oServer->Rights());
  return bConnected;
}

}  // namespace ZELWbr3::Postgres
