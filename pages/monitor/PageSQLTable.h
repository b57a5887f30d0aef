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

  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::SQLTable> oSQLTable) {
    m_oSQLTable = std::move(oSQLTable);
    PageUnfilled::Show(std::move(oDatabase));
  }

 private:
  std::shared_ptr<ZELLib3::SQLTable> m_oSQLTable;
};

}  // namespace ZELWbr3
