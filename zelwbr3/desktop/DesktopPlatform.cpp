#include "zelwbr3/desktop/DesktopPlatform.h"

#include "zelwbr3/desktop/CloseGuard.h"
#include "zelwbr3/desktop/DesktopMessageWindow.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"

#include <algorithm>

#include <wx/settings.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

Theme SystemTheme() { return wxSystemSettings::GetAppearance().IsDark() ? Theme::Dark : Theme::Light; }

DesktopPlatform::DesktopPlatform(wxWindow& oParent)
    : m_oParent(&oParent),
      m_oPump([this](const std::exception& o) { TraceFailure("An error outside of any wait", o); }),
      m_oMessageBox(oParent),
      m_oDialogBox(oParent),
      m_eTheme(SystemTheme()),
      m_oCloseGuard(std::make_unique<CloseGuard>(oParent, m_oPump)) {
  oParent.Bind(wxEVT_SYS_COLOUR_CHANGED, &DesktopPlatform::OnColoursChanged, this);
}

DesktopPlatform::~DesktopPlatform() {
  if (m_oParent != nullptr) m_oParent->Unbind(wxEVT_SYS_COLOUR_CHANGED, &DesktopPlatform::OnColoursChanged, this);
}

void DesktopPlatform::OnColoursChanged(wxSysColourChangedEvent& oEvent) {
  Theme(m_eChosenTheme);
  oEvent.Skip();
}

std::unique_ptr<WebBrowser> DesktopPlatform::MakeWebBrowser(int, WebBrowserEvents& oEvents) {
  return std::make_unique<DesktopWebBrowser>(*this, oEvents);
}

std::unique_ptr<MessageWindow> DesktopPlatform::MakeMessageWindow(MessageWindowEvents& oEvents) {
  return std::make_unique<DesktopMessageWindow>(*this, oEvents);
}

bool DesktopPlatform::Trace(const std::string& sText) {
  if (m_oTrace) m_oTrace(sText);
  return m_oTrace != nullptr;
}

void DesktopPlatform::Theme(std::optional<Desktop::Theme> eTheme) {
  m_eChosenTheme = eTheme;
  const Desktop::Theme eBefore = std::exchange(m_eTheme, eTheme.value_or(SystemTheme()));
  if (m_eTheme == eBefore) return;
  for (DesktopWebBrowser* oBrowser : m_oBrowsers) oBrowser->ThemeChanged();
}

DesktopWebBrowser* DesktopPlatform::Front() const {
  const auto it = std::ranges::find_if(m_oBrowsers, [](const auto* o) { return o->IsVisible(); });
  return it == m_oBrowsers.end() ? nullptr : *it;
}

}  // namespace ZELWbr3::Desktop
