#pragma once

#include "zelwbr3/ZELLib3/Analyzer.h"
#include "zelwbr3/platform/DialogBox.h"

#include <optional>

namespace ZELWbr3 {

/// Asks for the start options of the database analyzer.
class frmDBAnalyzerStart {
 public:
  using Options = ZELLib3::Analyzer::StartOptions;

  explicit frmDBAnalyzerStart(DialogBox& oDialogBox) : m_oDialogBox(oDialogBox) {}

  /// No value if the dialog was cancelled. A number field gives its leading
  /// number, rounded, or 0 if it has none.
  std::optional<Options> StartIt();

 private:
  DialogBox& m_oDialogBox;
};

}  // namespace ZELWbr3
