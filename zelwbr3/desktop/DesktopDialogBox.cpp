#include "zelwbr3/desktop/DesktopDialogBox.h"

#include "zelwbr3/desktop/DialogWindow.h"

namespace ZELWbr3::Desktop {

Dialog::Answer DesktopDialogBox::Show(Dialog& oDialog) {
  return DialogWindow(wxGetTopLevelParent(m_oParent), oDialog).Ask();
}

}  // namespace ZELWbr3::Desktop
