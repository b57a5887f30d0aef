#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The rows of one table.
class PageSQLTable : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageSQLTable;

  std::string Name() const override { return "SQLTable"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserDetail; }
};

}  // namespace ZELWbr3
