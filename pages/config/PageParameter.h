#pragma once

#include "pages/PageUnfilled.h"

namespace ZELWbr3 {

/// One configuration parameter.
class PageParameter : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageParameter;

  std::string Name() const override { return "Parameter"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserDetail; }

  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::Parameter> oParameter) {
    m_oParameter = std::move(oParameter);
    PageUnfilled::Show(std::move(oDatabase));
  }

 private:
  std::shared_ptr<ZELLib3::Parameter> m_oParameter;
};

}  // namespace ZELWbr3
