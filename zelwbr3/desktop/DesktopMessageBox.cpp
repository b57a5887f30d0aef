#include "zelwbr3/desktop/DesktopMessageBox.h"

#include "zelwbr3/desktop/DialogWindow.h"

namespace ZELWbr3::Desktop {

Dialog::Answer DesktopMessageBox::Ask(Dialog& oDialog, const std::function<void()>& oHelp) {
  return DialogWindow(wxGetTopLevelParent(m_oParent), oDialog, oHelp).Ask();
}

}  // namespace ZELWbr3::Desktop
