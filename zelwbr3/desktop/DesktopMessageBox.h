#pragma once

#include "zelwbr3/platform/MessageBox.h"

#include <wx/weakref.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

/// A dialog without fields, modal to the window that holds the control. Not the
/// toolkit's own message dialog, which shows no picture and does not stay open.
class DesktopMessageBox : public MessageBox {
 public:
  explicit DesktopMessageBox(wxWindow& oParent) : m_oParent(&oParent) {}

  Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  void ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                    const std::function<void()>& oHelp) override;

 private:
  bool Confirmed(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon,
                 const std::function<void()>& oHelp);

  wxWeakRef<wxWindow> m_oParent;
};

}  // namespace ZELWbr3::Desktop
