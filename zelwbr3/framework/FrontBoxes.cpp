#include "zelwbr3/framework/FrontBoxes.h"

#include "zelwbr3/platform/Platform.h"

namespace ZELWbr3 {

void FrontBoxes::Open(const std::function<void()>& oShow) {
  m_oBrowser.FlushDocuments();
  m_oPumping([&] {
    const clsHourglass::Pause oPause(m_oHourglass);
    oShow();
  });
}

MessageBox::Answer FrontBoxes::Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) {
  MessageBox::Answer eAnswer{};
  Open([&] { eAnswer = m_oBrowser.Platform().MessageBox().Show(sText, sTitle, eButtons, eIcon); });
  return eAnswer;
}

void FrontBoxes::ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                              const std::function<void()>& oHelp) {
  Open([&] { m_oBrowser.Platform().MessageBox().ShowWithHelp(sText, sTitle, eIcon, oHelp); });
}

Dialog::Answer FrontBoxes::Show(Dialog& oDialog) {
  Dialog::Answer eAnswer{};
  Open([&] { eAnswer = m_oBrowser.Platform().DialogBox().Show(oDialog); });
  return eAnswer;
}

}  // namespace ZELWbr3
