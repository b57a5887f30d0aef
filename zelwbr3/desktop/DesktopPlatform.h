#pragma once

#include "zelwbr3/desktop/DesktopDialogBox.h"
#include "zelwbr3/desktop/DesktopHelpFile.h"
#include "zelwbr3/desktop/DesktopMessageBox.h"
#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/DesktopScreenPointer.h"
#include "zelwbr3/desktop/Theme.h"
#include "zelwbr3/desktop/WebContext.h"
#include "zelwbr3/framework/SystemLocale.h"
#include "zelwbr3/platform/Platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <wx/weakref.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

class CloseGuard;
class DesktopWebBrowser;

/// The platform on wxWidgets and WebKit. The four frames lie on each other in
/// one window of the program.
///
/// While a page is waited for, closing the program's window would destroy the
/// control under the waiting code: the platform holds the close back, ends the
/// waits with an error, and closes the window when they have ended.
class DesktopPlatform : public Platform {
 public:
  using TraceTo = std::function<void(const std::string&)>;

  /// oParent holds the frames. Browsers that outlive it can no longer be used.
  explicit DesktopPlatform(wxWindow& oParent);
  ~DesktopPlatform() override;

  std::unique_ptr<WebBrowser> MakeWebBrowser(int iFrame, WebBrowserEvents& oEvents) override;
  ZELWbr3::MessagePump& MessagePump() override { return m_oPump; }
  ZELWbr3::ScreenPointer& ScreenPointer() override { return m_oPointer; }
  ZELWbr3::MessageBox& MessageBox() override { return m_oMessageBox; }
  ZELWbr3::DialogBox& DialogBox() override { return m_oDialogBox; }
  std::unique_ptr<MessageWindow> MakeMessageWindow(MessageWindowEvents& oEvents) override;
  DesktopHelpFile& HelpFile() override { return m_oHelpFile; }
  const ZELWbr3::UserLocale& UserLocale() const override { return m_oLocale; }
  bool Trace(const std::string& sText) override;

  /// Where traces go from now on; nowhere at first.
  void Trace(TraceTo oTrace) { m_oTrace = std::move(oTrace); }

  /// The theme of the program's windows, unless another one was chosen.
  Desktop::Theme Theme() const { return m_eTheme; }
  /// Chooses a theme, for the pages shown now, too; none = the program's own.
  void Theme(std::optional<Desktop::Theme> eTheme);

  /// The browser in front; null when there is none.
  DesktopWebBrowser* Front() const;

  /// Null when the window is gone.
  wxWindow* Parent() const { return m_oParent; }
  const WebContext& Context() const { return m_oContext; }
  DesktopPump& Pump() { return m_oPump; }
  /// The browsers that exist now, by no particular order.
  const std::vector<DesktopWebBrowser*>& Browsers() const { return m_oBrowsers; }

 private:
  friend class DesktopWebBrowser;

  void OnColoursChanged(wxSysColourChangedEvent& oEvent);

  wxWeakRef<wxWindow> m_oParent;
  TraceTo m_oTrace;
  WebContext m_oContext;
  DesktopPump m_oPump;
  DesktopScreenPointer m_oPointer;
  DesktopMessageBox m_oMessageBox;
  DesktopDialogBox m_oDialogBox;
  DesktopHelpFile m_oHelpFile;
  SystemLocale m_oLocale;
  std::optional<Desktop::Theme> m_eChosenTheme;
  Desktop::Theme m_eTheme;
  std::vector<DesktopWebBrowser*> m_oBrowsers;
  std::unique_ptr<CloseGuard> m_oCloseGuard;
};

}  // namespace ZELWbr3::Desktop
