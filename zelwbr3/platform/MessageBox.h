#pragma once

#include "zelwbr3/base/Export.h"

#include <functional>
#include <string>

namespace ZELWbr3 {

/// The program's message box: modal to the control's window.
class ZELWBR3_EXPORT MessageBox {
 public:
  enum class Buttons { OK, OKCancel, YesNo };
  enum class Icon { Exclamation, Question };
  enum class Answer { OK, Cancel, Yes, No };

  virtual ~MessageBox() = default;

  /// Returns when the user has answered. Closing the box without a choice gives
  /// the cancelling answer: Cancel, No, or OK if that is the only one.
  virtual Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) = 0;

  /// A box with OK and a Help button, which calls oHelp and leaves the box open.
  /// On a platform without such a button, a box with OK.
  virtual void ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                            const std::function<void()>& /*oHelp*/) {
    Show(sText, sTitle, Buttons::OK, eIcon);
  }
};

}  // namespace ZELWbr3
