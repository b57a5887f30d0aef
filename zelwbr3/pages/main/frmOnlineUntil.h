#pragma once

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/platform/DialogBox.h"

#include <optional>
#include <string>

namespace ZELWbr3 {

/// Asks for the point in time until which an instance is to be restarted.
class frmOnlineUntil {
 public:
  explicit frmOnlineUntil(DialogBox& oDialogBox) : m_oDialogBox(oDialogBox) {}

  /// No value when it was cancelled. Any point in time that exists can be
  /// chosen: whether it can be restarted to is for the instance to say.
  std::optional<Date> OnlineUntil(const std::string& sInstanceName, const Date& dStart = Calendar::Now());

 private:
  DialogBox& m_oDialogBox;
};

}  // namespace ZELWbr3
