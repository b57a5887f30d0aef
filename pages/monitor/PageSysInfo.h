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

  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::SysInfo> oSysInfo) {
    m_oSysInfo = std::move(oSysInfo);
    PageUnfilled::Show(std::move(oDatabase));
  }

 private:
  std::shared_ptr<ZELLib3::SysInfo> m_oSysInfo;
};

}  // namespace ZELWbr3
