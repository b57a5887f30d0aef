#pragma once

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/platform/DialogBox.h"

#include <optional>

namespace ZELWbr3 {

/// Asks up to which day to delete the analyzer's protocol sets.
class frmDBAnalyzerDelete {
 public:
  explicit frmDBAnalyzerDelete(DialogBox& oDialogBox) : m_oDialogBox(oDialogBox) {}

  /// The day chosen; no value if the dialog was cancelled.
  std::optional<Date> DeleteProtSets(const Date& dToday = Calendar::Now());

 private:
  DialogBox& m_oDialogBox;
};

}  // namespace ZELWbr3
