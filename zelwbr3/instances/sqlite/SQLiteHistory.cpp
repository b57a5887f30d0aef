#include "zelwbr3/instances/sqlite/SQLiteHistory.h"

#include "zelwbr3/instances/sqlite/file/FileId.h"

#include <algorithm>

namespace ZELWbr3::SQLite {

namespace {

constexpr std::size_t kBlock = 100;
constexpr int kCompleteData = 1;

std::string Bytes(std::int64_t lBytes) { return std::to_string(lBytes) + (lBytes == 1 ? " byte" : " bytes"); }

std::string FileState(const StateStore::Copy& oCopy) {
  const auto oFile = FileId::Of(oCopy.File);
  if (!oFile) return "not there";
  if (oCopy.Bytes >= 0 && oFile->Bytes != oCopy.Bytes) return "another size: " + Bytes(oFile->Bytes);
  return "there";
}

}  // namespace

bool SQLiteHistory::Open() {
  m_oCopies.clear();
  m_iDelivered = m_iPassed = 0;
  try {
    m_oCopies = m_oStateStore->Copies(StateStore::KeyOf(m_oFile->Path()));
  } catch (const ZELLib3::InstanceError& oError) {
    m_oFile->LastError(oError.ErrorObject());
    return false;
  }
  Deliver();
  return true;
}

bool SQLiteHistory::ReadMore() {
  if (!HasMore()) return m_oFile->Refuse("there are no more copies to read");
  Deliver();
  return true;
}

void SQLiteHistory::Deliver() { m_iDelivered = std::min(m_oCopies.size(), m_iDelivered + kBlock); }

std::shared_ptr<const ZELLib3::HistoryItem> SQLiteHistory::NextItem() {
  if (EndOfBlock()) return nullptr;
  const StateStore::Copy& oCopy = m_oCopies[m_iPassed++];
  auto oItem = std::make_shared<ZELLib3::HistoryItem>();
  oItem->Label = oCopy.Label;
  oItem->Action = "COPY";
  oItem->Kind = kCompleteData;
  oItem->Date = oCopy.Made;
  oItem->Fields = {{"File", oCopy.File},
                   {"Size", oCopy.Bytes >= 0 ? Bytes(oCopy.Bytes) : "not known"},
                   {"File now", FileState(oCopy)}};
  return oItem;
}

}  // namespace ZELWbr3::SQLite
