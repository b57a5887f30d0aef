#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The activity counters of the instance.
class PageInfoActivity : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageInfoActivity;

  std::string Name() const override { return "InfoActivity"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
