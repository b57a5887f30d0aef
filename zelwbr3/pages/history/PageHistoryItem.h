#pragma once

#include "zelwbr3/ZELLib3/HistoryItem.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELWbr3 {

/// One entry of the backup history: what it was, its details and its error.
class ZELWBR3_EXPORT PageHistoryItem : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageHistoryItem;

  std::string Name() const override { return "HistoryItem"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserDetail; }

  const std::shared_ptr<const ZELLib3::HistoryItem>& HistoryItem() const { return m_oHistoryItem; }
  void HistoryItem(std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) {
    m_oHistoryItem = std::move(oHistoryItem);
  }

  using DataPage::Show;
  /// Keeps both and shows the page.
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem);

  void CleanUp() override;

 protected:
  void FillContent() override;
  void Close() override { CloseDetail(); }

 private:
  /// The error text, or the message of a backup that did not fail.
  void FillError();

  std::shared_ptr<const ZELLib3::HistoryItem> m_oHistoryItem;
};

}  // namespace ZELWbr3
