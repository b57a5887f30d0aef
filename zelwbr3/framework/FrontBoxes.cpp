#include "zelwbr3/framework/FrontBoxes.h"

namespace ZELWbr3 {

MessageBox::Answer FrontBoxes::Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) {
  m_oBrowser.FlushDocuments();
  const clsHourglass::Pause oPause(m_oHourglass);
  return m_oBrowser.Platform().MessageBox().Show(sText, sTitle, eButtons, eIcon);
}

void FrontBoxes::ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                              const std::function<void()>& oHelp) {
  m_oBrowser.FlushDocuments();
  const clsHourglass::Pause oPause(m_oHourglass);
  m_oBrowser.Platform().MessageBox().ShowWithHelp(sText, sTitle, eIcon, oHelp);
}

Dialog::Answer FrontBoxes::Show(Dialog& oDialog) {
  m_oBrowser.FlushDocuments();
  const clsHourglass::Pause oPause(m_oHourglass);
  return m_oBrowser.Platform().DialogBox().Show(oDialog);
}

}  // namespace ZELWbr3
