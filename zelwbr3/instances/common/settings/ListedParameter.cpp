#include "zelwbr3/instances/common/settings/ListedParameter.h"

namespace ZELWbr3::Instances {

const std::vector<ObservationStore::Change>& ListedParameter::Changes() const {
  if (!m_oChanges) {
    m_oChanges.emplace();
    if (m_oEntry.IsObserved) *m_oChanges = m_oList->Changes();
    std::erase_if(*m_oChanges, [this](const ObservationStore::Change& oChange) { return oChange.Name != Name(); });
  }
  return *m_oChanges;
}

const ObservationStore::Change& ListedParameter::Change(std::int32_t k) const {
  if (k < 1 || Changes().size() < static_cast<std::size_t>(k)) {
    throw std::out_of_range(Name() + " has no change " + std::to_string(k));
  }
  return Changes()[static_cast<std::size_t>(k - 1)];
}

}  // namespace ZELWbr3::Instances
