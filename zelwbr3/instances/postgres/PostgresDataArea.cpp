#include "zelwbr3/instances/postgres/PostgresDataArea.h"

#include "zelwbr3/base/SizeText.h"
#include "zelwbr3/instances/common/VolumeList.h"

#include <map>

namespace ZELWbr3::Postgres {

namespace {

constexpr char kAsked[] = "reading the tablespaces";

std::string Databases(std::int64_t lCount) {
  return std::to_string(lCount) + (lCount == 1 ? " database" : " databases");
}

/// Pages read from each tablespace, by its number.
std::map<std::string, std::int64_t> PagesRead(Server& oServer) {
  std::map<std::string, std::int64_t> read;
  if (const auto o = oServer.Ask("tablespaces.io", kAsked)) {
    for (int i = 0; i < o->Rows(); ++i) {
      read[o->Text(i, "tablespace")] = static_cast<std::int64_t>(o->Real(i, "read"));
    }
  }
  return read;
}

}  // namespace

std::shared_ptr<ZELLib3::Volumes> PostgresDataArea::Volumes() const {
  std::vector<Instances::VolumeFigures> volumes;
  const auto oFigures = m_oServer->ReadFigures();
  if (oFigures) {
    const Result o = *m_oServer->Ask("tablespaces", kAsked);
    const auto read = PagesRead(*m_oServer);
    for (int i = 0; i < o.Rows(); ++i) {
      Instances::VolumeFigures oVolume{o.Text(i, "name"), 3, o.Text(i, "location"),
                                       Databases(o.Number(i, "databases"))};
      if (oVolume.Info1.empty()) oVolume.Info1 = m_oServer->DataDirectory();
      if (const auto lBytes = o.Known(i, "bytes")) {
        oVolume.Used = m_oServer->Pages(*lBytes);
        oVolume.Size = oVolume.Used;
        if (const auto oRoom = m_oServer->RoomAt(oVolume.Info1)) {
          oVolume.Size = m_oServer->Pages(*lBytes + oRoom->BytesLeft);
          oVolume.Info2 += ", " + SizeText(oRoom->BytesLeft) + " left on its disk";
        }
      } else {
        oVolume.Info2 += ", size not known to this user";
      }
      if (const auto it = read.find(o.Text(i, "oid")); it != read.end()) oVolume.PagesRead = it->second;
      volumes.push_back(std::move(oVolume));
    }
  }
  const ZELLib3::Long lCount = volumes.size();
  const ZELLib3::Long lSize = oFigures ? m_oServer->Pages(oFigures->DataTotal()) : ZELLib3::Long(0);
  return std::make_shared<Instances::VolumeList>(std::move(volumes), lCount, std::int32_t{lSize});
}

ZELLib3::Long PostgresDataArea::Size(ZELLib3::Long iIndex) const {
  const auto oFigures = m_oServer->ReadFigures();
  if (!oFigures || (iIndex != 0 && iIndex != 1)) return 0;
  return m_oServer->Pages(oFigures->DataTotal());
}

}  // namespace ZELWbr3::Postgres
