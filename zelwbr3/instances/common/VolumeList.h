#pragma once

#include "zelwbr3/ZELLib3/Volumes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// One volume of an area, as it is found. Sizes are pages.
struct VolumeFigures {
  std::string Name;
  ZELLib3::Long Kind;  ///< 2 log, 3 data
  std::string Info1;
  std::string Info2;
  std::int64_t Size = 0;
  std::int64_t Used = 0;
  std::int64_t PagesRead = -1;
  std::int64_t PagesWritten = -1;
};

class ListedVolume : public ZELLib3::Volume {
 public:
  explicit ListedVolume(VolumeFigures oFigures) : m_oFigures(std::move(oFigures)) {}

  std::string Name() const override { return m_oFigures.Name; }
  ZELLib3::Long Kind() const override { return m_oFigures.Kind; }
  std::string Info1() const override { return m_oFigures.Info1; }
  std::string Info2() const override { return m_oFigures.Info2; }
  ZELLib3::Long Size() const override { return m_oFigures.Size; }
  ZELLib3::Long UsedSize() const override { return m_oFigures.Used; }
  ZELLib3::Long FreeSize() const override { return m_oFigures.Size - m_oFigures.Used; }
  bool Configured() const override { return true; }
  /// Pages read and pages written; how many calls that took is not counted.
  ZELLib3::Long IOCount2() const override { return m_oFigures.PagesRead; }
  ZELLib3::Long IOCount4() const override { return m_oFigures.PagesWritten; }

 private:
  VolumeFigures m_oFigures;
};

/// The volumes of one area as a list; all sums are those of the list.
class VolumeList : public ZELLib3::Volumes {
 public:
  /// lSize is the size of all together where they share what is left on a disk;
  /// -1 = the sum of theirs.
  VolumeList(std::vector<VolumeFigures> oVolumes, ZELLib3::Long iMaxCount, std::int64_t lSize = -1)
      : m_oVolumes(std::move(oVolumes)), m_iMaxCount(iMaxCount), m_lSize(lSize) {}

  ZELLib3::Long Count() const override { return m_oVolumes.size(); }
  std::shared_ptr<ZELLib3::Volume> Item(ZELLib3::Long iIndex) const override {
    if (iIndex < 1 || iIndex > Count()) throw std::out_of_range("There is no such volume");
    return std::make_shared<ListedVolume>(m_oVolumes[static_cast<std::size_t>(iIndex - 1)]);
  }
  ZELLib3::Long MaxCount() const override { return m_iMaxCount; }
  ZELLib3::Long CurrentCount() const override { return Count(); }
  ZELLib3::Long CurrentSize() const override { return m_lSize < 0 ? Sum(&VolumeFigures::Size) : m_lSize; }
  ZELLib3::Long UsedSize() const override { return Sum(&VolumeFigures::Used); }
  ZELLib3::Long TotalSize() const override { return CurrentSize(); }
  ZELLib3::Long MaxLogCount() const override { return m_iMaxCount; }
  ZELLib3::Long CurrentLogCount() const override { return Count(); }
  ZELLib3::Long CurrentLogSize() const override { return CurrentSize(); }

 private:
  std::int64_t Sum(std::int64_t VolumeFigures::*pFigure) const {
    std::int64_t lSum = 0;
    for (const VolumeFigures& oVolume : m_oVolumes) lSum += oVolume.*pFigure;
    return lSum;
  }

  std::vector<VolumeFigures> m_oVolumes;
  ZELLib3::Long m_iMaxCount;
  std::int64_t m_lSize;
};

}  // namespace ZELWbr3::Instances
