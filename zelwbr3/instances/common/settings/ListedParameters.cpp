#include "zelwbr3/instances/common/settings/ListedParameters.h"

#include "zelwbr3/instances/common/settings/ListedParameter.h"

namespace ZELWbr3::Instances {

ZELLib3::Long ListedParameters::Count() const {
  const auto oEntries = m_oList->Entries();
  return oEntries ? oEntries->size() : 0;
}

std::shared_ptr<ZELLib3::Parameter> ListedParameters::Item(ZELLib3::Long iIndex) const {
  const auto oEntries = m_oList->Entries();
  const std::int32_t lIndex = iIndex;
  if (!oEntries || lIndex < 1 || oEntries->size() < static_cast<std::size_t>(lIndex)) {
    throw std::out_of_range("There is no parameter " + std::to_string(lIndex));
  }
  return std::make_shared<ListedParameter>(m_oList, (*oEntries)[static_cast<std::size_t>(lIndex - 1)]);
}

}  // namespace ZELWbr3::Instances
