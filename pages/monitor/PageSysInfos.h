#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The list of system information views.
class PageSysInfos : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageSysInfos;

  std::string Name() const override { return "SysInfos"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }
};

}  // namespace ZELWbr3
