#pragma once

#include "zelwbr3/ZELLib3/History.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/pages/monitor/BlockPage.h"

#include <vector>

namespace ZELWbr3 {

/// The backup history, newest entry first; a click shows an entry's details.
class ZELWBR3_EXPORT PageHistory : public BlockPage {
 public:
  static constexpr int Type = zelWebBrowserPageHistory;
  static constexpr int CommandOpen = 4;

  std::string Name() const override { return "History"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

 protected:
  void ObtainSource() override;
  std::shared_ptr<ZELLib3::BlockSource> Source() override { return m_oHistory; }
  void ReleaseSource() override;
  void FillHead() override;
  void BeginTable() override;
  void AddBlock() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  void AddItem(const ZELLib3::HistoryItem& oItem);

  std::shared_ptr<ZELLib3::History> m_oHistory;
  Element* m_oTemplate = nullptr;
  /// The entries shown; the first one's link has the index 1.
  std::vector<std::shared_ptr<const ZELLib3::HistoryItem>> m_items;
  /// Index of the last clicked entry.
  Long m_lIndex;
};

}  // namespace ZELWbr3
