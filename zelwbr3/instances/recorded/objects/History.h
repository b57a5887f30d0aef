#pragma once

#include "zelwbr3/instances/recorded/objects/Blocks.h"

namespace ZELWbr3::Recorded {

/// Delivers the newest entry first, in whatever order a recording lists them.
/// One without a date stays after the one listed before it.
class History final : public Blocks<ZELLib3::History> {
 public:
  explicit History(const Place& oPlace) : Blocks(oPlace, "Items", *oPlace.pValue) {}

  bool Open() override {
    if (!Blocks::Open()) return false;
    m_oNewestFirst.clear();
    std::string sDate;
    for (const Json& oItem : Entries()) {
      sDate = oItem.value("Date", sDate);  // texts of this form are in order of time
      m_oNewestFirst.emplace_back(sDate, &oItem);
    }
    std::ranges::stable_sort(m_oNewestFirst, std::ranges::greater(), &Dated::first);
    return true;
  }

  std::shared_ptr<const ZELLib3::HistoryItem> NextItem() override {
    Do("NextItem");
    if (!Next()) return nullptr;
    return std::make_shared<const ZELLib3::HistoryItem>(
        FromJson<ZELLib3::HistoryItem>(*m_oNewestFirst[*CurrentIndex()].second));
  }

 private:
  using Dated = std::pair<std::string, const Json*>;
  std::vector<Dated> m_oNewestFirst;
};

}  // namespace ZELWbr3::Recorded
