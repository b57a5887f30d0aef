#pragma once

#include "instances/recorded/BlockCursor.h"
#include "instances/recorded/Object.h"

namespace ZELWbr3::Recorded {

class History final : public Of<ZELLib3::History> {
 public:
  using Of::Of;

  bool IsEmpty() const override {
    Check("IsEmpty");
    return List("Items").empty();
  }
  Long RowCount() const override {
    Check("RowCount");
    return m_oCursor.Delivered();
  }
  bool Open() override {
    m_oCursor.Close();
    if (!Do("Open")) return false;
    const Json* const pBlockSize = Find(*Here().pValue, "BlockSize");
    m_oCursor.Open(List("Items").size(), pBlockSize != nullptr ? pBlockSize->get<std::size_t>() : DefaultBlockSize);
    return true;
  }
  bool ReadMore() override {
    if (!Do("ReadMore")) return false;
    m_oCursor.Deliver();
    return true;
  }
  std::shared_ptr<const ZELLib3::HistoryItem> NextItem() override {
    Do("NextItem");
    if (!m_oCursor.Next()) return nullptr;
    return std::make_shared<const ZELLib3::HistoryItem>(
        FromJson<ZELLib3::HistoryItem>(List("Items")[*m_oCursor.Current()]));
  }
  bool EndOfBlock() const override {
    Check("EndOfBlock");
    return m_oCursor.EndOfBlock();
  }
  bool HasMore() const override {
    Check("HasMore");
    return m_oCursor.HasMore();
  }

 private:
  BlockCursor m_oCursor;
};

}  // namespace ZELWbr3::Recorded
