#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The log area.
class PageLogArea : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageLogArea;

  std::string Name() const override { return "LogArea"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
