#pragma once

#include "zelwbr3/platform/DialogBox.h"

#include <wx/weakref.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

/// Draws the control's dialogs with the toolkit, modal to the window that holds
/// the control.
class DesktopDialogBox : public DialogBox {
 public:
  explicit DesktopDialogBox(wxWindow& oParent) : m_oParent(&oParent) {}

  Dialog::Answer Show(Dialog& oDialog) override;

 private:
  wxWeakRef<wxWindow> m_oParent;
};

}  // namespace ZELWbr3::Desktop
