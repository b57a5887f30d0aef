#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The caches of the instance.
class PageInfoCaches : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageInfoCaches;

  std::string Name() const override { return "InfoCaches"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
