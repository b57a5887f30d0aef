#pragma once

#include "zelwbr3/base/Export.h"

#include <exception>
#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3 {

class DialogBox;
class HelpFile;
class MessageBox;
class MessagePump;
class MessageWindow;
class MessageWindowEvents;
class ScreenPointer;
class UserLocale;
class WebBrowser;
class WebBrowserEvents;

/// All doors of one platform. The host creates it, passes it to the control and
/// keeps it alive as long as the control.
class ZELWBR3_EXPORT Platform {
 public:
  virtual ~Platform();

  /// Creates the browser of one frame (0 to 3). It reports to oEvents, which
  /// outlives it, until it is destroyed.
  virtual std::unique_ptr<WebBrowser> MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) = 0;

  virtual ZELWbr3::MessagePump& MessagePump() = 0;
  virtual ZELWbr3::ScreenPointer& ScreenPointer() = 0;
  virtual ZELWbr3::MessageBox& MessageBox() = 0;
  virtual const ZELWbr3::UserLocale& UserLocale() const = 0;

  // Optional; those that show something raise std::logic_error.

  virtual ZELWbr3::DialogBox& DialogBox();
  /// Creates a message window without showing it. It reports to oEvents, which
  /// outlives it.
  virtual std::unique_ptr<MessageWindow> MakeMessageWindow(MessageWindowEvents& oEvents);
  /// One that has no topic.
  virtual ZELWbr3::HelpFile& HelpFile();
  /// Hands work from any thread to the user-interface thread, where the message
  /// loop does it. Raises std::logic_error.
  virtual void Post(std::function<void()> oWork);

  /// A line for developers and support; users do not see it.
  /// False when nobody reads it.
  virtual bool Trace(const std::string& sText) = 0;
  /// What was thrown where nobody could handle it, such as by a host's event
  /// handler: never lost, it goes to standard error if nobody reads the trace. The
  /// end of a wait is only traced: whoever ended it knows.
  void TraceFailure(const std::string& sWhere, const std::exception& oThrown);
};

}  // namespace ZELWbr3
