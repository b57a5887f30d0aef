#include "zelwbr3/desktop/BrowserPanel.h"

#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"
#include "zelwbr3/desktop/KeyTranslation.h"

namespace ZELWbr3::Desktop {

namespace {

/// 1 Shift, 2 Ctrl, 4 Alt.
int ShiftState(const wxKeyEvent& oEvent) {
  return (oEvent.ShiftDown() ? 1 : 0) + (oEvent.ControlDown() ? 2 : 0) + (oEvent.AltDown() ? 4 : 0);
}

}  // namespace

struct BrowserPanel::Control {
  explicit Control(wxWindow& oWindow) : oPlatform(oWindow), oBrowser(oPlatform) {}
  DesktopPlatform oPlatform;
  ZELWbr3::Browser oBrowser;
};

BrowserPanel::BrowserPanel(wxWindow* oParent, wxWindowID iID)
    : wxPanel(oParent, iID, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxWANTS_CHARS | wxBORDER_NONE),
      m_oControl(std::make_shared<Control>(*this)) {
  Bind(wxEVT_SIZE, &BrowserPanel::OnSize, this);
  Bind(wxEVT_KEY_DOWN, &BrowserPanel::OnKeyDown, this);
  Bind(wxEVT_KEY_UP, &BrowserPanel::OnKeyUp, this);
  Bind(wxEVT_CHAR, &BrowserPanel::OnChar, this);
}

BrowserPanel::~BrowserPanel() {
  DesktopPump& oPump = Platform().Pump();
  if (!oPump.Waiting()) return;
  oPump.EndWaits(std::make_exception_ptr(WaitError("The control was destroyed")));
  oPump.AfterWaits([oControl = m_oControl]() mutable { oControl.reset(); });
}

ZELWbr3::Browser& BrowserPanel::Browser() { return m_oControl->oBrowser; }
DesktopPlatform& BrowserPanel::Platform() { return m_oControl->oPlatform; }

void BrowserPanel::SetFocus() {
  if (Browser().VisibleDocument() != nullptr) {
    Platform().Front()->Focus();
  } else {
    SetCanFocus(true);  // wx takes it away from every panel that has children
    SetFocusIgnoringChildren();
  }
}

void BrowserPanel::SetFocusFromKbd() {
  if (DesktopWebBrowser* oFront = Platform().Front()) oFront->Enter(true);
}

bool BrowserPanel::PageHasFocus() const {
  const DesktopWebBrowser* oFront = m_oControl->oPlatform.Front();
  return oFront != nullptr && oFront->HasFocus();
}

bool BrowserPanel::KeyToPage(const wxKeyEvent& oEvent) {
  DesktopWebBrowser* oFront = Platform().Front();
  return oFront != nullptr && oFront->KeyPress(Translate(oEvent));
}

void BrowserPanel::OnSize(wxSizeEvent& oEvent) {
  const wxSize oSize = GetClientSize();
  Browser().Resize(oSize.GetWidth(), oSize.GetHeight());
  oEvent.Skip();
}

// Unhandled keys of a page arrive here as well, because such events go from a
// window to its parent; they are not the control's own.

void BrowserPanel::OnKeyDown(wxKeyEvent& oEvent) { PassOn(Browser().KeyDown, oEvent); }

void BrowserPanel::OnKeyUp(wxKeyEvent& oEvent) { PassOn(Browser().KeyUp, oEvent); }

void BrowserPanel::PassOn(const Event<Integer&, Integer&>& oRaised, wxKeyEvent& oEvent) {
  oEvent.Skip();
  if (oEvent.GetEventObject() != this) return;
  Integer iKeyCode = int{Translate(oEvent).Code};
  Integer iShift = ShiftState(oEvent);
  const bool bKey = iKeyCode != 0;
  Platform().Pump().Deliver([&] { oRaised.Raise(iKeyCode, iShift); });
  oEvent.Skip(!bKey || iKeyCode != 0);
}

void BrowserPanel::OnChar(wxKeyEvent& oEvent) {
  oEvent.Skip();
  const int iCharacter = oEvent.GetUnicodeKey();
  if (oEvent.GetEventObject() != this || iCharacter == WXK_NONE || iCharacter > 0x7FFF) return;
  Integer iKeyAscii = iCharacter;
  Platform().Pump().Deliver([&] { Browser().KeyPress.Raise(iKeyAscii); });
  oEvent.Skip(iKeyAscii != 0);
}

}  // namespace ZELWbr3::Desktop
