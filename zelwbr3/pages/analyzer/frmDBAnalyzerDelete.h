#pragma once

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/platform/DialogBox.h"

#include <optional>

namespace ZELWbr3 {

/// Asks up to which day the analyzer's protocol sets are to be deleted.
class frmDBAnalyzerDelete {
 public:
  explicit frmDBAnalyzerDelete(DialogBox& oDialogBox) : m_oDialogBox(oDialogBox) {}

  /// No value when it was cancelled; of the date only the day counts.
  std::optional<Date> DeleteProtSets(const Date& dToday = Calendar::Now());

 private:
  DialogBox& m_oDialogBox;
};

}  // namespace ZELWbr3
