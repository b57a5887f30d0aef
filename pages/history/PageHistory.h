#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The list of backup history entries.
class PageHistory : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageHistory;

  std::string Name() const override { return "History"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
