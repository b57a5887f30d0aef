#include "zelwbr3/instances/sqlite/settings/PragmaList.h"

#include "zelwbr3/instances/sqlite/settings/Pragma.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

namespace ZELWbr3::SQLite {

std::optional<std::vector<PragmaList::Entry>> PragmaList::ReadEntries() {
  std::vector<Entry> entries;
  const bool bRead = m_oFile->Attempt([&](Connection& oConnection) {
    for (const Pragma& oPragma : Pragma::All()) {
      const auto oValue = oPragma.Read(oConnection);
      if (!oValue) continue;
      const std::string sNext = oPragma.ReadNext(oConnection, *oValue);
      entries.push_back({oPragma.Name, *oValue, oPragma.Description, oPragma.FullExplanation(), oPragma.InGroup, sNext,
                         sNext, oPragma.KeptBy == Pragma::Keeper::File, ""});
    }
  });
  if (!bRead) return std::nullopt;
  return entries;
}

std::string PragmaList::Key() { return StateStore::KeyOf(m_oFile->Path()); }

}  // namespace ZELWbr3::SQLite
