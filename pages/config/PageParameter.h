#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// One configuration parameter.
class PageParameter : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageParameter;

  std::string Name() const override { return "Parameter"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserDetail; }
};

}  // namespace ZELWbr3
