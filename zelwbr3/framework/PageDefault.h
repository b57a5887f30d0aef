#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/Page.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELWbr3 {

/// The default page: shows its page file as it is.
class ZELWBR3_EXPORT PageDefault : public Page {
 public:
  static constexpr int Type = zelWebBrowserPageDefault;

  std::string Name() const override { return "Default"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

  void Show() { ShowInFrame(); }

  /// Raises Click; never handles it.
  bool HandleOnClick(const std::string& sID) override;
  /// F5 loads the page file again.
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override;

  /// A click on an element: its id.
  Event<const std::string&> Click;
};

}  // namespace ZELWbr3
