#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELWbr3 {

/// The sessions of the instance.
class ZELWBR3_EXPORT PageSessions : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageSessions;
  static constexpr int CommandSelect = 2;

  std::string Name() const override { return "Sessions"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

 protected:
  void FillContent() override;
  bool ShowsFooter() const override { return true; }
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  /// Index of the last clicked session.
  Long m_lIndex;
};

}  // namespace ZELWbr3
