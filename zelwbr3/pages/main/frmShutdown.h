#pragma once

#include "zelwbr3/platform/DialogBox.h"

#include <string>

namespace ZELWbr3 {

/// Asks how to shut down an instance.
class frmShutdown {
 public:
  struct Choice {
    bool Quick = false;  ///< abort running transactions
    bool Cancelled = true;
  };

  explicit frmShutdown(DialogBox& oDialogBox) : m_oDialogBox(oDialogBox) {}

  Choice Shutdown(const std::string& sInstanceName);

 private:
  DialogBox& m_oDialogBox;
};

}  // namespace ZELWbr3
