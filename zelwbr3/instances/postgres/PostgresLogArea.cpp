#include "zelwbr3/instances/postgres/PostgresLogArea.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/SizeText.h"
#include "zelwbr3/instances/common/VolumeList.h"

#include <algorithm>

namespace ZELWbr3::Postgres {

namespace {

constexpr char kAsked[] = "reading the log area";

class PlainSettings : public ZELLib3::LogAreaSettings {
 public:
  explicit PlainSettings(bool bOverwrites) : m_bOverwrites(bOverwrites) {}
  ZELLib3::Long LogMode() const override { return 1; }
  ZELLib3::Long Overwrite() const override { return m_bOverwrites ? 2 : 1; }
  ZELLib3::Long RedoLog() const override { return 1; }

 private:
  bool m_bOverwrites;
};

std::string SegmentsText(const Figures& oFigures) {
  const std::string sSize = SizeText(oFigures.Segment);
  if (!oFigures.LogFiles) return "segments of " + sSize;
  const std::string sCount =
      std::to_string(oFigures.LogSegments) + (oFigures.LogSegments == 1 ? " segment" : " segments");
  return sCount + " of " + sSize + ", " + std::to_string(oFigures.RecycledSegments) + " recycled";
}

/// What needs the most of the log.
std::string KeeperText(Server& oServer, const Figures& oFigures) {
  const std::int64_t lUsed = oFigures.LogUsed();
  if (lUsed == 0) return {};
  if (oFigures.KeptBySlots == lUsed) {
    std::string sSlot = "a slot";
    if (const auto o = oServer.Ask("slot.oldest", kAsked); o && o->Rows() > 0)
      sSlot = "slot " + o->Text(0, "slot_name");
    return sSlot + " keeps " + SizeText(lUsed);
  }
  if (oFigures.Unarchived == lUsed) return SizeText(lUsed) + " not yet archived";
  if (oFigures.SinceCheckpoint == lUsed) return SizeText(lUsed) + " since the last checkpoint";
  return "wal_keep_size keeps " + SizeText(lUsed);
}

std::int64_t PagesWritten(Server& oServer) {
  const auto o = oServer.Ask("activity.wal", kAsked);
  return o && o->Rows() > 0 ? static_cast<std::int64_t>(o->Real(0, "pages")) : -1;
}

}  // namespace

std::shared_ptr<ZELLib3::Volumes> PostgresLogArea::Volumes() const {
  std::vector<Instances::VolumeFigures> volumes;
  if (const auto oFigures = m_oServer->ReadFigures()) {
    Instances::VolumeFigures oVolume{"pg_wal", 2, SegmentsText(*oFigures), KeeperText(*m_oServer, *oFigures)};
    oVolume.Used = m_oServer->Pages(oFigures->LogUsed());
    oVolume.Size = m_oServer->Pages(std::max(oFigures->LogFiles.value_or(0), oFigures->LogUsed()));
    oVolume.PagesWritten = PagesWritten(*m_oServer);
    volumes.push_back(std::move(oVolume));
  }
  return std::make_shared<Instances::VolumeList>(std::move(volumes), 1);
}

std::shared_ptr<ZELLib3::LogAreaSettings> PostgresLogArea::Settings() const {
  const auto oFigures = m_oServer->ReadFigures();
  if (!oFigures) return std::make_shared<ZELLib3::LogAreaSettings>();
  return std::make_shared<PlainSettings>(!oFigures->Archives());
}

ZELLib3::Long PostgresLogArea::Size(ZELLib3::Long iIndex) const {
  const auto oFigures = m_oServer->ReadFigures();
  if (!oFigures) return 0;
  switch (iIndex) {
    case 0:
      return m_oServer->Pages(oFigures->LogTotal());
    case 1:
      return m_oServer->Pages(oFigures->Segment);
    case 2:
      return m_oServer->Pages(oFigures->LogTotal()) - m_oServer->Pages(oFigures->LogUsed());
    case 3:
      return m_oServer->Pages(oFigures->LogUsed());
    case 4:
      return m_oServer->Pages(oFigures->Unarchived);
    case 5:
      return m_oServer->Pages(oFigures->SinceArchived);
    default:
      return 0;
  }
}

ZELLib3::Long PostgresLogSettings::AutoOverwrite() const {
  const auto oFigures = m_oServer->ReadFigures();
  if (!oFigures) return ZELLib3::Switch::Unknown;
  const bool bNobody = !oFigures->Archives() && oFigures->Slots == 0 && oFigures->Nodes.empty() && !oFigures->IsStandby;
  return bNobody ? ZELLib3::Switch::On : ZELLib3::Switch::Off;
}

ZELLib3::Long PostgresLogSettings::WriteOff() const { return ZELLib3::Switch::Off; }

}  // namespace ZELWbr3::Postgres
