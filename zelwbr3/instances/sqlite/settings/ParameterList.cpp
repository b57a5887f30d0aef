#include "zelwbr3/instances/sqlite/settings/ParameterList.h"

#include "zelwbr3/base/Calendar.h"

namespace ZELWbr3::SQLite {

bool ParameterList::ReadValues() {
  m_oEntries.reset();
  return m_oFile->Attempt([this](Connection& oConnection) {
    auto oEntries = std::make_shared<std::vector<Entry>>();
    for (const Pragma& oPragma : Pragma::All()) {
      const auto oValue = oPragma.Read(oConnection);
      if (oValue) oEntries->push_back({&oPragma, *oValue, oPragma.ReadNext(oConnection, *oValue)});
    }
    m_oEntries = std::move(oEntries);
    m_dEntriesEnd = std::chrono::steady_clock::now() + m_oFile->Options().ReadingLifetime;
  });
}

/// Raises ZELLib3::InstanceError when the store cannot be used.
void ParameterList::Observe() {
  StateStore::Settings oSettings;
  for (const Entry& oEntry : *m_oEntries) {
    if (oEntry.Pragma->KeptBy == Pragma::Keeper::File) oSettings[oEntry.Pragma->Name] = oEntry.Value;
  }
  m_oStateStore->Observe(StateStore::KeyOf(m_oFile->Path()), oSettings, Calendar::Now());
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
    const ZELLib3::Error oBefore = m_oFile->LastError();
    if (!ReadValues()) m_oFile->LastError(oBefore);  // no operation has failed
  }
  return m_oEntries;
}

std::vector<StateStore::Change> ParameterList::Changes() {
  try {
    return m_oStateStore->Changes(StateStore::KeyOf(m_oFile->Path()));
  } catch (const ZELLib3::InstanceError&) {
    return {};  // as in Load
  }
}

bool ParameterList::OpenChanges(std::vector<StateStore::Change>& oChanges) {
  oChanges.clear();
  try {
    if (Entries()) Observe();
    oChanges = m_oStateStore->Changes(StateStore::KeyOf(m_oFile->Path()));
    m_bReported = false;
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    if (std::exchange(m_bReported, true)) return true;
    m_oFile->LastError(oError.ErrorObject());
    return false;
  }
}

}  // namespace ZELWbr3::SQLite
