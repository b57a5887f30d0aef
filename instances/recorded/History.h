#pragma once

#include "instances/recorded/Blocks.h"

namespace ZELWbr3::Recorded {

class History final : public Blocks<ZELLib3::History> {
 public:
  explicit History(const Place& oPlace) : Blocks(oPlace, "Items", *oPlace.pValue) {}

  std::shared_ptr<const ZELLib3::HistoryItem> NextItem() override {
    Do("NextItem");
    if (!Next()) return nullptr;
    return std::make_shared<const ZELLib3::HistoryItem>(FromJson<ZELLib3::HistoryItem>(*Current()));
  }
};

}  // namespace ZELWbr3::Recorded
