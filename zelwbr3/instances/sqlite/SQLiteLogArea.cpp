#include "zelwbr3/instances/sqlite/SQLiteLogArea.h"

#include "zelwbr3/instances/common/VolumeList.h"
#include "zelwbr3/instances/sqlite/SQLiteLogAreaSettings.h"

namespace ZELWbr3::SQLite {

namespace {

std::string Frames(std::int64_t lCount) { return std::to_string(lCount) + (lCount == 1 ? " frame" : " frames"); }

std::string CheckpointState(const WalFile& oWal) {
  if (oWal.Frames == 0) return "nothing to copy";
  if (oWal.Checkpointed >= oWal.Frames) return "all copied into the database file";
  return std::to_string(oWal.Checkpointed) + " of " + std::to_string(oWal.Frames) + " copied into the database file";
}

}  // namespace

std::shared_ptr<ZELLib3::Volumes> SQLiteLogArea::Volumes() const {
  Instances::VolumeFigures oVolume{m_oFile->PathBeside("-wal"), 2, "", ""};
  std::vector<Instances::VolumeFigures> oVolumes;
  const auto oReading = m_oFile->Read();
  if (const Usage* pUsage = oReading->Figures()) {
    if (pUsage->UsesWal) {
      const WalFile& oWal = pUsage->Wal;
      oVolume.Size = pUsage->LogTotal();
      oVolume.Used = pUsage->LogUsed();
      oVolume.Info1 = Frames(oWal.Frames);  // short: the page gives it a narrow column
      oVolume.Info2 = CheckpointState(oWal) + "; the file has room for " + std::to_string(oWal.FileFrames);
      oVolumes.push_back(oVolume);
    }
  } else if (const auto oFile = FileId::Of(oVolume.Name); oFile && oFile->Bytes > 0) {
    const std::int64_t lFrames = WalFile::FramesIn(oFile->Bytes, m_oFile->PageSize());
    oVolume.Size = lFrames * m_oFile->PageSize() / m_oFile->Unit();
    oVolume.Info1 = Frames(lFrames);
    oVolume.Info2 = "as far as the file's size tells";
    oVolumes.push_back(oVolume);
  }
  return std::make_shared<Instances::VolumeList>(std::move(oVolumes), 1);
}

std::shared_ptr<ZELLib3::LogAreaSettings> SQLiteLogArea::Settings() const {
  return std::make_shared<SQLiteLogAreaSettings>(m_oFile->JournalMode());
}

ZELLib3::Long SQLiteLogArea::Size(ZELLib3::Long iIndex) const {
  const auto oReading = m_oFile->Read();
  const Usage* pUsage = oReading->Figures();
  if (!pUsage || !pUsage->UsesWal) return 0;
  switch (iIndex) {
    case 0:
      return pUsage->LogTotal();
    case 1:
      return pUsage->PagesOf(pUsage->AutoCheckpoint);
    case 2:
      return std::max<std::int64_t>(0, pUsage->LogTotal() - pUsage->LogUsed());
    case 3:
      return pUsage->LogUsed();
    case 4:
      return pUsage->PagesOf(std::max<std::int64_t>(0, pUsage->Wal.Frames - pUsage->Wal.Checkpointed));
    default:
      return 0;
  }
}

}  // namespace ZELWbr3::SQLite
