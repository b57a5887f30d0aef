#include "zelwbr3/instances/sqlite/SQLiteHistory.h"

#include "zelwbr3/instances/sqlite/file/FileId.h"

namespace ZELWbr3::SQLite {

namespace {

constexpr int kCompleteData = 1;

std::string Bytes(std::int64_t lBytes) { return std::to_string(lBytes) + (lBytes == 1 ? " byte" : " bytes"); }

std::string FileState(const StateStore::Copy& oCopy) {
  const auto oFile = FileId::Of(oCopy.File);
  if (!oFile) return "not there";
  if (oCopy.Bytes >= 0 && oFile->Bytes != oCopy.Bytes) return "another size: " + Bytes(oFile->Bytes);
  return "there";
}

}  // namespace

bool SQLiteHistory::Load() {
  m_oCopies.clear();
  try {
    m_oCopies = m_oStateStore->Copies(StateStore::KeyOf(m_oFile->Path()));
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    m_oFile->LastError(oError.ErrorObject());
    return false;
  }
}

ZELLib3::HistoryItem SQLiteHistory::Item(std::size_t i) const {
  const StateStore::Copy& oCopy = m_oCopies[i];
  ZELLib3::HistoryItem oItem;
  oItem.Label = oCopy.Label;
  oItem.Action = "COPY";
  oItem.Kind = kCompleteData;
  oItem.Date = oCopy.Made;
  oItem.Fields = {{"File", oCopy.File},
                  {"Size", oCopy.Bytes >= 0 ? Bytes(oCopy.Bytes) : "not known"},
                  {"File now", FileState(oCopy)}};
  return oItem;
}

}  // namespace ZELWbr3::SQLite
