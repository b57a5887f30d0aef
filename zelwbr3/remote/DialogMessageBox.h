#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/Dialog.h"

#include <functional>
#include <string>

namespace ZELWbr3::Remote {

/// Message boxes as dialogs without fields, for platforms that draw both alike.
class ZELWBR3_EXPORT DialogMessageBox : public MessageBox {
 public:
  Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  void ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                    const std::function<void()>& oHelp) override;

 protected:
  /// Shows a dialog and returns when it has been answered. If oHelp is not empty, it
  /// has a Help button, which calls that and leaves it open.
  virtual Dialog::Answer Ask(Dialog& oDialog, const std::function<void()>& oHelp) = 0;
};

}  // namespace ZELWbr3::Remote
