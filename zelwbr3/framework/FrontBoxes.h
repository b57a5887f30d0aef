#pragma once

#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/platform/DialogBox.h"
#include "zelwbr3/platform/MessageBox.h"

#include <functional>
#include <memory>

namespace ZELWbr3 {

/// The platform's message box and dialogs as a page uses them: before one
/// opens, what the page has written is sent to the screen, and the wait cursor
/// is suspended while it is open. When the page was left in the meantime the
/// task that asked ends with PageLeft: no answer comes back to it.
class FrontBoxes : public MessageBox, public DialogBox {
 public:
  /// Runs something that pumps messages; throws PageLeft when the page was left.
  using Pumping = std::function<void(const std::function<void()>&)>;

  FrontBoxes(PageSite& oBrowser, std::shared_ptr<clsHourglass> oHourglass, Pumping oPumping)
      : m_oBrowser(oBrowser), m_oHourglass(std::move(oHourglass)), m_oPumping(std::move(oPumping)) {}

  MessageBox::Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  void ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                    const std::function<void()>& oHelp) override;
  Dialog::Answer Show(Dialog& oDialog) override;

 private:
  void Open(const std::function<void()>& oShow);

  PageSite& m_oBrowser;
  std::shared_ptr<clsHourglass> m_oHourglass;
  Pumping m_oPumping;
};

}  // namespace ZELWbr3
