#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELWbr3 {

/// The list of system information views; a click opens one.
class ZELWBR3_EXPORT PageSysInfos : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageSysInfos;
  static constexpr int CommandOpen = 2;

  std::string Name() const override { return "SysInfos"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

  /// Enter is a click on the element that is active.
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override;

 protected:
  void FillContent() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  /// Index of the last clicked view.
  Long m_lIndex;
};

}  // namespace ZELWbr3
