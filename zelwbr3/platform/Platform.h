#pragma once

#include "zelwbr3/platform/DialogBox.h"
#include "zelwbr3/platform/HelpFile.h"
#include "zelwbr3/platform/MessageBox.h"
#include "zelwbr3/platform/MessagePump.h"
#include "zelwbr3/platform/MessageWindow.h"
#include "zelwbr3/platform/ScreenPointer.h"
#include "zelwbr3/platform/UserLocale.h"
#include "zelwbr3/platform/WebBrowser.h"

#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

namespace ZELWbr3 {

/// All doors of one platform. The host creates it, passes it to the control and
/// keeps it alive as long as the control.
class Platform {
 public:
  virtual ~Platform() = default;

  /// Creates the browser of one frame (0 to 3). It reports to oEvents, which
  /// outlives it, until it is destroyed.
  virtual std::unique_ptr<WebBrowser> MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) = 0;

  virtual ZELWbr3::MessagePump& MessagePump() = 0;
  virtual ZELWbr3::ScreenPointer& ScreenPointer() = 0;
  virtual ZELWbr3::MessageBox& MessageBox() = 0;
  virtual const ZELWbr3::UserLocale& UserLocale() const = 0;

  // Optional.

  virtual ZELWbr3::DialogBox& DialogBox() { throw std::logic_error("This program cannot show dialogs"); }
  /// Creates a message window without showing it. It reports to oEvents, which
  /// outlives it.
  virtual std::unique_ptr<MessageWindow> MakeMessageWindow(MessageWindowEvents&) {
    throw std::logic_error("This program cannot show help");
  }
  virtual ZELWbr3::HelpFile& HelpFile() {
    static ZELWbr3::HelpFile oNone;
    return oNone;
  }

  /// A line for developers and support; users do not see it.
  /// False when nobody reads it.
  virtual bool Trace(const std::string& sText) = 0;
  /// What was thrown where nobody could handle it, such as by a host's event
  /// handler: never lost, it goes to standard error if nobody reads the trace. The
  /// end of a wait is only traced: whoever ended it knows.
  void TraceFailure(const std::string& sWhere, const std::exception& oThrown) {
    const std::string sText = sWhere + ": " + oThrown.what();
    const bool bRead = Trace(sText);
    if (!bRead && dynamic_cast<const WaitError*>(&oThrown) == nullptr) std::cerr << sText << std::endl;
  }
};

}  // namespace ZELWbr3
