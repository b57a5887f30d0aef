#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The configuration parameters by group.
class PageParameters : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageParameters;

  std::string Name() const override { return "Parameters"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
