#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// One system information view.
class PageSysInfo : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageSysInfo;

  std::string Name() const override { return "SysInfo"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserDetail; }
};

}  // namespace ZELWbr3
