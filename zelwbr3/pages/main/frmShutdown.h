#pragma once

#include "zelwbr3/platform/DialogBox.h"

#include <string>

namespace ZELWbr3 {

/// Asks how an instance is to be shut down.
class frmShutdown {
 public:
  struct Choice {
    bool Quick = false;  ///< break running transactions off
    bool Cancelled = true;
  };

  explicit frmShutdown(DialogBox& oDialogBox) : m_oDialogBox(oDialogBox) {}

  Choice Shutdown(const std::string& sInstanceName);

 private:
  DialogBox& m_oDialogBox;
};

}  // namespace ZELWbr3
