#include "zelwbr3/instances/common/settings/ParameterList.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/common/settings/ListedParameter.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Instances {

bool ParameterList::ReadValues() {
  m_oEntries.reset();
  auto oEntries = ReadEntries();
  if (!oEntries) return false;
  m_oEntries = std::make_shared<const std::vector<Entry>>(std::move(*oEntries));
  m_dEntriesEnd = std::chrono::steady_clock::now() + m_dLifetime;
  return true;
}

/// Raises ZELLib3::InstanceError when the store cannot be used.
void ParameterList::Observe() {
  if (!m_oStore) return;
  ObservationStore::Settings oSettings;
  for (const Entry& oEntry : *m_oEntries) {
    if (oEntry.IsObserved) oSettings[oEntry.Name] = oEntry.Value;
  }
  m_oStore->Observe(Key(), oSettings, Calendar::Now());
}

bool ParameterList::Load() {
  if (!ReadValues()) return false;
  try {
    Observe();
  } catch (const ZELLib3::InstanceError&) {
    // The parameters are shown anyway; opening the history says why there is
    // none.
  }
  return true;
}

std::shared_ptr<const std::vector<ParameterList::Entry>> ParameterList::Entries() {
  if (!m_oEntries || std::chrono::steady_clock::now() >= m_dEntriesEnd) {
    const ZELLib3::Error oBefore = LastError();
    if (!ReadValues()) LastError(oBefore);  // no operation has failed
  }
  return m_oEntries;
}

std::shared_ptr<ZELLib3::Parameter> ParameterList::Item(const std::string& sName) {
  if (const auto oEntries = Entries()) {
    const auto it = std::ranges::find(*oEntries, sName, &Entry::Name);
    if (it != oEntries->end()) return std::make_shared<ListedParameter>(shared_from_this(), *it);
  }
  return std::make_shared<ZELLib3::Parameter>();
}

std::string ParameterList::SourceOf(const std::string& sName) {
  const auto oEntries = Entries();
  if (!oEntries) return {};
  const auto it = std::ranges::find(*oEntries, sName, &Entry::Name);
  return it == oEntries->end() ? std::string() : it->Source;
}

std::vector<ObservationStore::Change> ParameterList::Changes() {
  try {
    if (m_oStore) return m_oStore->Changes(Key());
  } catch (const ZELLib3::InstanceError&) {
    // As in Load.
  }
  return {};
}

bool ParameterList::OpenChanges(std::vector<ObservationStore::Change>& oChanges) {
  oChanges.clear();
  try {
    if (Entries()) Observe();
    if (m_oStore) oChanges = m_oStore->Changes(Key());
    m_bReported = false;
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    if (std::exchange(m_bReported, true)) return true;
    LastError(oError.ErrorObject());
    return false;
  }
}

}  // namespace ZELWbr3::Instances
