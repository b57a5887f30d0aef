#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELWbr3 {

/// The activity counters since the instance was started: SQL commands and the
/// rows they touched, I/O, locks, log writing, scans and sorts.
class ZELWBR3_EXPORT PageInfoActivity : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageInfoActivity;

  std::string Name() const override { return "InfoActivity"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

 protected:
  void FillContent() override;
};

}  // namespace ZELWbr3
