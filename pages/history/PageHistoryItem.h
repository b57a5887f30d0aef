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
};

}  // namespace ZELWbr3
