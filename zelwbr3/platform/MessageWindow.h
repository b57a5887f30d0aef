#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/WebBrowser.h"

#include <string>

namespace ZELWbr3 {

/// What a message window reports: the events of its browser, and its own size.
class ZELWBR3_EXPORT MessageWindowEvents : public WebBrowserEvents {
 public:
  /// The window's inside has this size now, in the platform's pixels. Also called
  /// before the window is first visible.
  virtual void Resize(int iWidth, int iHeight) = 0;
};

/// The window that explains a message: modal to the control's window, with one
/// embedded web browser. Escape closes it, Ctrl+C copies the selection.
class ZELWBR3_EXPORT MessageWindow {
 public:
  virtual ~MessageWindow() = default;

  virtual ZELWbr3::WebBrowser& WebBrowser() = 0;
  /// Sets the compiled help file whose topics the page may show. Call it before
  /// the first navigation. Without a help file, or on a platform that cannot read
  /// one, the page shows no topic.
  virtual void CHMPath(const std::string& /*sPath*/) {}
  /// Where the page finds a topic, for a platform that does not know the usual URLs of
  /// compiled help files; empty for one that does.
  virtual std::string TopicURL(const std::string& /*sHelpID*/) const { return {}; }
  /// Returns when the user has closed the window.
  virtual void ShowModal() = 0;
};

}  // namespace ZELWbr3
