#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The state of the database analyzer.
class PageDBAnalyzer : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageDBAnalyzer;

  std::string Name() const override { return "DBAnalyzer"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserMain; }
};

}  // namespace ZELWbr3
