#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/desktop/Theme.h"
#include "zelwbr3/platform/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class wxWindow;

namespace ZELWbr3::Desktop {

class DesktopPump;
class DesktopWebBrowser;
class WebContext;

/// The platform on wxWidgets and WebKit. The four frames lie on each other in
/// one window of the program.
///
/// While a page is waited for, closing the program's window would destroy the
/// control under the waiting code: the platform holds the close back, ends the
/// waits with an error, and closes the window when they have ended.
class ZELWBR3_EXPORT DesktopPlatform : public Platform {
 public:
  using TraceTo = std::function<void(const std::string&)>;

  /// oParent holds the frames. Browsers that outlive it can no longer be used.
  explicit DesktopPlatform(wxWindow& oParent);
  ~DesktopPlatform() override;

  std::unique_ptr<WebBrowser> MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) override;
  ZELWbr3::MessagePump& MessagePump() override;
  ZELWbr3::ScreenPointer& ScreenPointer() override;
  ZELWbr3::MessageBox& MessageBox() override;
  ZELWbr3::DialogBox& DialogBox() override;
  std::unique_ptr<MessageWindow> MakeMessageWindow(MessageWindowEvents& oEvents) override;
  ZELWbr3::HelpFile& HelpFile() override;
  const ZELWbr3::UserLocale& UserLocale() const override;
  void Post(std::function<void()> oWork) override;
  bool Trace(const std::string& sText) override;

  /// Where traces go from now on; nowhere at first.
  void Trace(TraceTo oTrace);

  /// The theme of the program's windows, unless another one was chosen.
  Desktop::Theme Theme() const;
  /// Chooses a theme, for the pages shown now, too; none = the program's own.
  void Theme(std::optional<Desktop::Theme> eTheme);

  /// The browser in front; null when there is none.
  DesktopWebBrowser* Front() const;

  /// Null when the window is gone.
  wxWindow* Parent() const;
  const WebContext& Context() const;
  DesktopPump& Pump();
  /// The browsers that exist now, by no particular order.
  const std::vector<DesktopWebBrowser*>& Browsers() const;

 private:
  friend class DesktopWebBrowser;
  /// A browser exists, or no longer.
  void Watch(DesktopWebBrowser& oBrowser, bool bExists);

  struct Doors;
  std::unique_ptr<Doors> m_oDoors;
};

}  // namespace ZELWbr3::Desktop
