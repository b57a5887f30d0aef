#include "zelwbr3/desktop/DesktopPlatform.h"

#include "zelwbr3/chm/CompiledHelp.h"
#include "zelwbr3/desktop/CloseGuard.h"
#include "zelwbr3/desktop/DesktopDialogBox.h"
#include "zelwbr3/desktop/DesktopMessageBox.h"
#include "zelwbr3/desktop/DesktopMessageWindow.h"
#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/DesktopScreenPointer.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"
#include "zelwbr3/desktop/WebContext.h"
#include "zelwbr3/framework/SystemLocale.h"

#include <algorithm>
#include <utility>

#include <wx/app.h>
#include <wx/settings.h>
#include <wx/weakref.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

Theme SystemTheme() { return wxSystemSettings::GetAppearance().IsDark() ? Theme::Dark : Theme::Light; }

struct DesktopPlatform::Doors {
  Doors(DesktopPlatform& oOwner, wxWindow& oWindow)
      : oPlatform(oOwner),
        oParent(&oWindow),
        oPump([&oOwner](const std::exception& o) { oOwner.TraceFailure("An error outside of any wait", o); }),
        oMessageBox(oWindow),
        oDialogBox(oWindow),
        oCloseGuard(oWindow, oPump) {
    oWindow.Bind(wxEVT_SYS_COLOUR_CHANGED, &Doors::OnColoursChanged, this);
  }
  ~Doors() {
    if (oParent != nullptr) oParent->Unbind(wxEVT_SYS_COLOUR_CHANGED, &Doors::OnColoursChanged, this);
  }
  Doors(const Doors&) = delete;
  Doors& operator=(const Doors&) = delete;

  void OnColoursChanged(wxSysColourChangedEvent& oEvent) {
    oPlatform.Theme(eChosenTheme);
    oEvent.Skip();
  }

  DesktopPlatform& oPlatform;
  wxWeakRef<wxWindow> oParent;
  TraceTo oTrace;
  WebContext oContext;
  DesktopPump oPump;
  DesktopScreenPointer oPointer;
  DesktopMessageBox oMessageBox;
  DesktopDialogBox oDialogBox;
  CHM::CompiledHelp oHelpFile;
  SystemLocale oLocale;
  std::optional<Desktop::Theme> eChosenTheme;
  Desktop::Theme eTheme = SystemTheme();
  std::vector<DesktopWebBrowser*> browsers;
  CloseGuard oCloseGuard;
  /// Expires with the platform.
  std::shared_ptr<const bool> oAlive = std::make_shared<const bool>(true);
};

DesktopPlatform::DesktopPlatform(wxWindow& oParent) : m_oDoors(std::make_unique<Doors>(*this, oParent)) {}
DesktopPlatform::~DesktopPlatform() = default;

std::unique_ptr<WebBrowser> DesktopPlatform::MakeWebBrowser(int, WebBrowserEvents& oEvents) {
  return std::make_unique<DesktopWebBrowser>(*this, oEvents);
}

std::unique_ptr<MessageWindow> DesktopPlatform::MakeMessageWindow(MessageWindowEvents& oEvents) {
  return std::make_unique<DesktopMessageWindow>(*this, oEvents);
}

MessagePump& DesktopPlatform::MessagePump() { return m_oDoors->oPump; }
ScreenPointer& DesktopPlatform::ScreenPointer() { return m_oDoors->oPointer; }
MessageBox& DesktopPlatform::MessageBox() { return m_oDoors->oMessageBox; }
DialogBox& DesktopPlatform::DialogBox() { return m_oDoors->oDialogBox; }
HelpFile& DesktopPlatform::HelpFile() { return m_oDoors->oHelpFile; }
const UserLocale& DesktopPlatform::UserLocale() const { return m_oDoors->oLocale; }
wxWindow* DesktopPlatform::Parent() const { return m_oDoors->oParent; }
const WebContext& DesktopPlatform::Context() const { return m_oDoors->oContext; }
DesktopPump& DesktopPlatform::Pump() { return m_oDoors->oPump; }
const std::vector<DesktopWebBrowser*>& DesktopPlatform::Browsers() const { return m_oDoors->browsers; }

void DesktopPlatform::Post(std::function<void()> oWork) {
  wxTheApp->CallAfter([pDoors = m_oDoors.get(), oAlive = std::weak_ptr(m_oDoors->oAlive), oWork = std::move(oWork)] {
    if (!oAlive.expired()) pDoors->oPump.Deliver(oWork);
  });
}

bool DesktopPlatform::Trace(const std::string& sText) {
  if (m_oDoors->oTrace) m_oDoors->oTrace(sText);
  return m_oDoors->oTrace != nullptr;
}
void DesktopPlatform::Trace(TraceTo oTrace) { m_oDoors->oTrace = std::move(oTrace); }

Theme DesktopPlatform::Theme() const { return m_oDoors->eTheme; }
void DesktopPlatform::Theme(std::optional<Desktop::Theme> eTheme) {
  m_oDoors->eChosenTheme = eTheme;
  const Desktop::Theme eBefore = std::exchange(m_oDoors->eTheme, eTheme.value_or(SystemTheme()));
  if (m_oDoors->eTheme == eBefore) return;
  for (DesktopWebBrowser* oBrowser : m_oDoors->browsers) oBrowser->ThemeChanged();
}

void DesktopPlatform::Watch(DesktopWebBrowser& oBrowser, bool bExists) {
  std::erase(m_oDoors->browsers, &oBrowser);
  if (bExists) m_oDoors->browsers.push_back(&oBrowser);
}

DesktopWebBrowser* DesktopPlatform::Front() const {
  const auto it = std::ranges::find_if(m_oDoors->browsers, [](const auto* o) { return o->IsVisible(); });
  return it == m_oDoors->browsers.end() ? nullptr : *it;
}

}  // namespace ZELWbr3::Desktop
