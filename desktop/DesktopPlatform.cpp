#include "desktop/DesktopPlatform.h"

#include "desktop/CloseGuard.h"
#include "desktop/DesktopWebBrowser.h"

#include <wx/settings.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

Theme SystemTheme() { return wxSystemSettings::GetAppearance().IsDark() ? Theme::Dark : Theme::Light; }

DesktopPlatform::DesktopPlatform(wxWindow& oParent)
    : m_oParent(oParent),
      m_oPump([this](const std::string& sText) { Trace(sText); }),
      m_oMessageBox(oParent),
      m_eTheme(SystemTheme()),
      m_oCloseGuard(std::make_unique<CloseGuard>(oParent, m_oPump)) {}

DesktopPlatform::~DesktopPlatform() = default;

std::unique_ptr<WebBrowser> DesktopPlatform::MakeWebBrowser(int, WebBrowserEvents& oEvents) {
  return std::make_unique<DesktopWebBrowser>(*this, oEvents);
}

void DesktopPlatform::Trace(const std::string& sText) {
  if (m_oTrace) m_oTrace(sText);
}

void DesktopPlatform::Theme(Desktop::Theme eTheme) {
  m_eTheme = eTheme;
  for (DesktopWebBrowser* oBrowser : m_oBrowsers) oBrowser->ThemeChanged();
}

void DesktopPlatform::Focus() {
  for (DesktopWebBrowser* oBrowser : m_oBrowsers) {
    if (oBrowser->IsVisible()) oBrowser->Focus();
  }
}

}  // namespace ZELWbr3::Desktop
