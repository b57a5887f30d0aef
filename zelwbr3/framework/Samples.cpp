#include "zelwbr3/framework/Samples.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <mutex>
#include <utility>

namespace ZELWbr3 {

namespace {

/// Milliseconds within which two readings are one: rates of less would be noise.
constexpr std::int64_t AtOnce = 1000;

}  // namespace

std::optional<double> Samples::Group::Rate(const std::string& sID, std::int64_t iWithin) const {
  const auto it = std::ranges::find(m_figures, sID, &Figure::ID);
  if (it == m_figures.end() || Count() < 2) return std::nullopt;
  const auto iFigure = static_cast<std::size_t>(it - m_figures.begin());
  const std::size_t iLast = Count() - 1;
  const auto itFirst = std::ranges::lower_bound(m_times, Time(iLast) - iWithin);
  const auto iFirst = static_cast<std::size_t>(itFirst - m_times.begin());
  const std::int64_t iTook = Time(iLast) - Time(iFirst);
  const double dMore = Value(iLast, iFigure) - Value(iFirst, iFigure);
  if (iTook < iWithin / 10 || iTook == 0 || std::isnan(dMore)) return std::nullopt;
  return dMore * 1000 / static_cast<double>(iTook);
}

std::shared_ptr<Samples> Samples::Of(const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  // An instance that is gone makes way for others; there are never more than a few.
  static std::mutex oMutex;
  const std::lock_guard oLock(oMutex);
  static std::vector<std::pair<std::weak_ptr<ZELLib3::Database>, std::shared_ptr<Samples>>> all;
  std::erase_if(all, [](const auto& o) { return o.first.expired(); });
  for (const auto& [oWeak, oSamples] : all) {
    // Without keeping another thread's instance alive: it is to end there.
    if (!oWeak.owner_before(oDatabase) && !oDatabase.owner_before(oWeak)) return oSamples;
  }
  return all.emplace_back(oDatabase, std::make_shared<Samples>()).second;
}

void Samples::Add(const std::string& sGroup, std::vector<Figure> figures) {
  const auto tNow = std::chrono::system_clock::now().time_since_epoch();
  Add(sGroup, std::move(figures), std::chrono::duration_cast<std::chrono::milliseconds>(tNow).count());
}

void Samples::Add(const std::string& sGroup, std::vector<Figure> figures, std::int64_t iTime) {
  Group& o = m_groups[sGroup];
  const auto Same = [](const Figure& oOne, const Figure& oOther) { return oOne.ID == oOther.ID; };
  if (!std::ranges::equal(o.m_figures, figures, Same)) o = {};
  o.m_figures = std::move(figures);
  const std::size_t iFigures = o.m_figures.size();
  const auto Drop = [&](bool bFirst) {
    bFirst ? o.m_times.pop_front() : o.m_times.pop_back();
    const auto iValues = static_cast<std::ptrdiff_t>(iFigures);
    if (bFirst) {
      o.m_values.erase(o.m_values.begin(), o.m_values.begin() + iValues);
    } else {
      o.m_values.erase(o.m_values.end() - iValues, o.m_values.end());
    }
  };
  // The newest reading stands until the next one is far enough from the one before.
  const std::size_t iCount = o.m_times.size();
  const bool bAtOnce = iCount >= 1 && iTime - o.m_times[iCount - 1] < AtOnce;
  if (bAtOnce || (iCount >= 2 && o.m_times[iCount - 1] - o.m_times[iCount - 2] < Distance)) Drop(false);
  if (o.m_times.size() == Most) Drop(true);
  o.m_times.push_back(iTime);
  for (const Figure& oFigure : o.m_figures) o.m_values.push_back(oFigure.Value);
}

const Samples::Group* Samples::Of(const std::string& sGroup) const {
  const auto it = m_groups.find(sGroup);
  return it == m_groups.end() ? nullptr : &it->second;
}

}  // namespace ZELWbr3
