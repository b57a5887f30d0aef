#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// One entry of the backup history.
class PageHistoryItem : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageHistoryItem;

  std::string Name() const override { return "HistoryItem"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserDetail; }

  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) {
    m_oHistoryItem = std::move(oHistoryItem);
    PageUnfilled::Show(std::move(oDatabase));
  }

 private:
  std::shared_ptr<const ZELLib3::HistoryItem> m_oHistoryItem;
};

}  // namespace ZELWbr3
