#include "zelwbr3/instances/sqlite/SQLiteParameters.h"

#include "zelwbr3/instances/sqlite/SQLiteParameter.h"

#include <algorithm>

namespace ZELWbr3::SQLite {

ZELLib3::Long SQLiteParameters::Count() const {
  const auto oEntries = m_oList->Entries();
  return oEntries ? oEntries->size() : 0;
}

std::shared_ptr<ZELLib3::Parameter> SQLiteParameters::Item(ZELLib3::Long iIndex) const {
  const auto oEntries = m_oList->Entries();
  const std::int32_t lIndex = iIndex;
  if (!oEntries || lIndex < 1 || oEntries->size() < static_cast<std::size_t>(lIndex)) {
    throw std::out_of_range("There is no parameter " + std::to_string(lIndex));
  }
  return std::make_shared<SQLiteParameter>(m_oList, (*oEntries)[static_cast<std::size_t>(lIndex - 1)]);
}

std::shared_ptr<ZELLib3::Parameter> SQLiteParameters::Item(const std::string& sName) const {
  if (const auto oEntries = m_oList->Entries()) {
    const auto it = std::ranges::find_if(*oEntries, [&](const auto& oEntry) { return oEntry.Pragma->Name == sName; });
    if (it != oEntries->end()) return std::make_shared<SQLiteParameter>(m_oList, *it);
  }
  return std::make_shared<ZELLib3::Parameter>();
}

}  // namespace ZELWbr3::SQLite
