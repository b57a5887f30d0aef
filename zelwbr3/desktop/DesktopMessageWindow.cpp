#include "zelwbr3/desktop/DesktopMessageWindow.h"

#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"

namespace ZELWbr3::Desktop {

namespace {

/// The innermost window that is modal to oWindow, or oWindow itself.
wxWindow* Front(wxWindow* oWindow) {
  for (wxWindow* oEach : wxTopLevelWindows) {
    const auto* oDialog = dynamic_cast<const wxDialog*>(oEach);
    if (oDialog != nullptr && oDialog->IsModal() && oEach->GetParent() == oWindow) return Front(oEach);
  }
  return oWindow;
}

}  // namespace

DesktopMessageWindow::DesktopMessageWindow(DesktopPlatform& oPlatform, MessageWindowEvents& oEvents)
    : m_oEvents(oEvents) {
  wxWindow* oParent = Front(wxGetTopLevelParent(oPlatform.Parent()));
  m_oDialog = new wxDialog(oParent, wxID_ANY, "Message", wxDefaultPosition, wxDefaultSize,
                           wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX);
  m_oDialog->SetClientSize(m_oDialog->FromDIP(wxSize(560, 420)));
  m_oDialog->SetMinClientSize(m_oDialog->FromDIP(wxSize(240, 160)));
  m_oDialog->CentreOnParent();
  m_oBrowser = std::make_unique<DesktopWebBrowser>(oPlatform, *m_oDialog, oEvents);
  m_oBrowser->Visible(true);
  m_oDialog->Bind(wxEVT_SIZE, &DesktopMessageWindow::OnSize, this);
  m_oDialog->Bind(wxEVT_CHAR_HOOK, &DesktopMessageWindow::OnKey, this);
  m_oDialog->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { m_oDialog->EndModal(wxID_CANCEL); });
}

DesktopMessageWindow::~DesktopMessageWindow() {
  m_oBrowser.reset();
  if (m_oDialog != nullptr) m_oDialog->Destroy();
}

WebBrowser& DesktopMessageWindow::WebBrowser() { return *m_oBrowser; }

void DesktopMessageWindow::CHMPath(const std::string& sPath) { m_oBrowser->HelpFile(sPath); }

void DesktopMessageWindow::ShowModal() {
  const wxSize oSize = m_oDialog->GetClientSize();
  m_oEvents.Resize(oSize.x, oSize.y);
  // The keyboard goes to the text, so that it can be scrolled and copied.
  m_oDialog->CallAfter([this] { m_oBrowser->Focus(); });
  m_oDialog->ShowModal();
}

// Keys arrive here only when the page has not handled them, so text selected in
// a topic is already copied where the browser does that itself.
void DesktopMessageWindow::OnKey(wxKeyEvent& oEvent) {
  if (oEvent.GetKeyCode() == WXK_ESCAPE) {
    m_oDialog->EndModal(wxID_CANCEL);
  } else if (oEvent.GetKeyCode() == 'C' && oEvent.GetModifiers() == wxMOD_CONTROL) {
    m_oBrowser->Copy();
  } else {
    oEvent.Skip();
  }
}

void DesktopMessageWindow::OnSize(wxSizeEvent& oEvent) {
  const wxSize oSize = m_oDialog->GetClientSize();
  m_oEvents.Resize(oSize.x, oSize.y);
  oEvent.Skip();
}

}  // namespace ZELWbr3::Desktop
