#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/Dialog.h"

namespace ZELWbr3 {

/// Draws the control's dialogs: modal to the control's window.
class ZELWBR3_EXPORT DialogBox {
 public:
  virtual ~DialogBox() = default;

  /// Shows a dialog and returns when the user has pressed one of its buttons; its
  /// fields then hold what was entered, even if the dialog was cancelled.
  virtual Dialog::Answer Show(Dialog& oDialog) = 0;
};

}  // namespace ZELWbr3
