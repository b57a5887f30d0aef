#pragma once

#include "zelwbr3/remote/DialogMessageBox.h"

#include <wx/weakref.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

/// A dialog without fields, modal to the window that holds the control. Not the
/// toolkit's own message dialog, which shows no picture and does not stay open.
class DesktopMessageBox : public Remote::DialogMessageBox {
 public:
  explicit DesktopMessageBox(wxWindow& oParent) : m_oParent(&oParent) {}

 private:
  Dialog::Answer Ask(Dialog& oDialog, const std::function<void()>& oHelp) override;

  wxWeakRef<wxWindow> m_oParent;
};

}  // namespace ZELWbr3::Desktop
