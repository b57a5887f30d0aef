#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The sessions of the instance.
class PageSessions : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageSessions;

  std::string Name() const override { return "Sessions"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
