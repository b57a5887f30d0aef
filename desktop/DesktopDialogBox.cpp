#include "desktop/DesktopDialogBox.h"

#include "desktop/DialogWindow.h"

namespace ZELWbr3::Desktop {

Dialog::Answer DesktopDialogBox::Show(Dialog& oDialog) {
  return DialogWindow(wxGetTopLevelParent(m_oParent), oDialog).Ask();
}

}  // namespace ZELWbr3::Desktop
