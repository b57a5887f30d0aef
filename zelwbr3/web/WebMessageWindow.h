#pragma once

#include "zelwbr3/platform/MessageWindow.h"
#include "zelwbr3/web/WebWebBrowser.h"

#include <string>

namespace ZELWbr3::Web {

class WebPlatform;

/// The message window as a dialog of the shell, with a frame of its own.
class WebMessageWindow : public MessageWindow {
 public:
  /// The number of its frame, behind those of the control.
  static constexpr std::uint32_t Frame = 4;

  WebMessageWindow(WebPlatform& oPlatform, MessageWindowEvents& oEvents);
  ~WebMessageWindow() override;

  ZELWbr3::WebBrowser& WebBrowser() override { return m_oBrowser; }
  std::string TopicURL(const std::string& sHelpID) const override;
  void ShowModal() override;

  /// The user closes it.
  void Closed() { m_bClosed = true; }
  /// Opens it in a shell that has nothing.
  void ShowAgain();

 private:
  WebPlatform& m_oPlatform;
  bool m_bClosed = false;
  /// Gone before the dialog around its frame.
  WebWebBrowser m_oBrowser;
};

}  // namespace ZELWbr3::Web
