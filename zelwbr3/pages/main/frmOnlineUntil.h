#pragma once

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/platform/DialogBox.h"

#include <optional>
#include <string>

namespace ZELWbr3 {

/// Asks for the point in time to restore an instance to when it is restarted.
class frmOnlineUntil {
 public:
  explicit frmOnlineUntil(DialogBox& oDialogBox) : m_oDialogBox(oDialogBox) {}

  /// No value if the dialog was cancelled. Any point in time that exists can be
  /// chosen; the instance decides whether it can be restored to that.
  std::optional<Date> OnlineUntil(const std::string& sInstanceName, const Date& dStart = Calendar::Now());

 private:
  DialogBox& m_oDialogBox;
};

}  // namespace ZELWbr3
