#pragma once

#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/platform/DialogBox.h"
#include "zelwbr3/platform/MessageBox.h"

#include <memory>

namespace ZELWbr3 {

/// The platform's message box and dialogs as a page uses them: before one
/// opens, what the page has written is sent to the screen, and the wait cursor
/// is suspended while it is open.
///
/// Made for one question or a few. The user may have closed the control by the
/// time one is answered; asking again would then be a mistake.
class FrontBoxes : public MessageBox, public DialogBox {
 public:
  FrontBoxes(PageSite& oBrowser, std::shared_ptr<clsHourglass> oHourglass)
      : m_oBrowser(oBrowser), m_oHourglass(std::move(oHourglass)) {}

  MessageBox::Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  void ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                    const std::function<void()>& oHelp) override;
  Dialog::Answer Show(Dialog& oDialog) override;

 private:
  PageSite& m_oBrowser;
  std::shared_ptr<clsHourglass> m_oHourglass;
};

}  // namespace ZELWbr3
