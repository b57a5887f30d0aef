#include "zelwbr3/instances/sqlite/SQLiteDataArea.h"

#include "zelwbr3/instances/common/VolumeList.h"

namespace ZELWbr3::SQLite {

std::shared_ptr<ZELLib3::Volumes> SQLiteDataArea::Volumes() const {
  Instances::VolumeFigures oVolume{m_oFile->Path(), 3, "main", "closed"};
  const auto oReading = m_oFile->Read();
  if (const Connection* pConnection = m_oFile->Current()) {
    oVolume.Info2 = std::to_string(pConnection->PageSize()) + " bytes a page, " +
                    (pConnection->UsesWal() ? "write-ahead log" : "rollback journal");
  }
  if (const Usage* pUsage = oReading->Figures()) {
    oVolume.Size = pUsage->PageCount;
    oVolume.Used = pUsage->PageCount - pUsage->FreePages;
    oVolume.PagesRead = pUsage->CacheMisses;
    oVolume.PagesWritten = pUsage->CacheWrites;
  } else if (const auto oFile = FileId::Of(m_oFile->Path()); oFile) {
    oVolume.Size = (oFile->Bytes + m_oFile->Unit() - 1) / m_oFile->Unit();
  }
  return std::make_shared<Instances::VolumeList>(std::vector{oVolume}, 1);
}

ZELLib3::Long SQLiteDataArea::Size(ZELLib3::Long iIndex) const {
  return iIndex == 0 || iIndex == 1 ? Volumes()->CurrentSize() : ZELLib3::Long(0);
}

}  // namespace ZELWbr3::SQLite
