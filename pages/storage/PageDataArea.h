#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The data area.
class PageDataArea : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageDataArea;

  std::string Name() const override { return "DataArea"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
