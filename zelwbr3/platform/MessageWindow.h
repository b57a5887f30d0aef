#pragma once

#include "zelwbr3/platform/WebBrowser.h"

#include <string>

namespace ZELWbr3 {

/// What a message window reports: what its browser does, and its own size.
class MessageWindowEvents : public WebBrowserEvents {
 public:
  /// The window's inside has got this size, in the platform's pixels. Also
  /// before it is seen for the first time.
  virtual void Resize(int iWidth, int iHeight) = 0;
};

/// The window that explains a message: modal to the control's window, with one
/// embedded web browser. Escape closes it and Ctrl+C copies what is selected.
class MessageWindow {
 public:
  virtual ~MessageWindow() = default;

  virtual ZELWbr3::WebBrowser& WebBrowser() = 0;
  /// The compiled help file whose topics the page may show; before the first
  /// navigation. Without one, or where help files cannot be read, it shows none.
  virtual void CHMPath(const std::string& /*sPath*/) {}
  /// Returns when the user has closed the window.
  virtual void ShowModal() = 0;
};

}  // namespace ZELWbr3
