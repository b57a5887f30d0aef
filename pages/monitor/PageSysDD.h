#pragma once

#include "pages/PageUnfilled.h"

#include <utility>

namespace ZELWbr3 {

/// The system tables of the data dictionary: one page file per release.
class PageSysDD : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageSysDD;

  /// "SysDD" and the release of the instance shown last, such as SysDD74.
  std::string Name() const override { return m_sName; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }

  void Show(std::shared_ptr<ZELLib3::Database> oDatabase) {
    const auto oVersion = oDatabase->Version();
    m_sName = "SysDD" + std::to_string(oVersion->Major()) + std::to_string(oVersion->Minor());
    PageUnfilled::Show(std::move(oDatabase));
  }

 private:
  std::string m_sName = "SysDD";
};

}  // namespace ZELWbr3
