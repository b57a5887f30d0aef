#pragma once

#include "platform/MessageBox.h"

#include <wx/weakref.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

/// The toolkit's message dialog, modal to the window that holds the control.
class DesktopMessageBox : public MessageBox {
 public:
  explicit DesktopMessageBox(wxWindow& oParent) : m_oParent(&oParent) {}

  Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  void ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                    const std::function<void()>& oHelp) override;

 private:
  wxWeakRef<wxWindow> m_oParent;
};

}  // namespace ZELWbr3::Desktop
