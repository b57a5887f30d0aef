#include "zelwbr3/desktop/CloseGuard.h"

#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/KeyTranslation.h"

#include <gtk/gtk.h>
#include <wx/accel.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/menu.h>

#include <algorithm>
#include <vector>

namespace ZELWbr3::Desktop {

namespace {

std::vector<CloseGuard*>& Guards() {
  static std::vector<CloseGuard*> oGuards;
  return oGuards;
}

/// The key of the frame's menu item wxID_EXIT.
bool IsQuitKey(const wxWindow* oWindow, const GdkEvent& oEvent) {
  const auto* oFrame = dynamic_cast<const wxFrame*>(oWindow);
  const wxMenuBar* oBar = oFrame == nullptr ? nullptr : oFrame->GetMenuBar();
  const wxMenuItem* oQuit = oBar == nullptr ? nullptr : oBar->FindItem(wxID_EXIT);
  const std::unique_ptr<wxAcceleratorEntry> oKey(oQuit == nullptr ? nullptr : oQuit->GetAccel());
  if (oKey == nullptr || oEvent.type != GDK_KEY_PRESS) return false;
  const guint iState = oEvent.key.state & (GDK_CONTROL_MASK | GDK_SHIFT_MASK | GDK_MOD1_MASK);
  const guint iWanted = ((oKey->GetFlags() & wxACCEL_CTRL) != 0 ? GDK_CONTROL_MASK : 0) |
                        ((oKey->GetFlags() & wxACCEL_SHIFT) != 0 ? GDK_SHIFT_MASK : 0) |
                        ((oKey->GetFlags() & wxACCEL_ALT) != 0 ? GDK_MOD1_MASK : 0);
  return iState == iWanted && Translate(oEvent.key).Code == oKey->GetKeyCode();
}

/// What a click on the window's close button does.
void ClickCloseButton(GtkWidget* oWindow) {
  GdkEvent* oEvent = gdk_event_new(GDK_DELETE);
  oEvent->any.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(oWindow)));
  gtk_main_do_event(oEvent);
  gdk_event_free(oEvent);
}

}  // namespace

CloseGuard::CloseGuard(wxWindow& oParent, DesktopPump& oPump) : m_oParent(&oParent), m_oPump(oPump) {
  Guards().push_back(this);
  wxEvtHandler::AddFilter(this);
  Register();
  m_oNext.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { GoOn(); });
}

CloseGuard::~CloseGuard() {
  Unregister();
  wxEvtHandler::RemoveFilter(this);
  std::erase(Guards(), this);
}

void CloseGuard::Watch() { gdk_event_handler_set(HandleNative, nullptr, nullptr); }

void CloseGuard::HandleNative(GdkEvent* oEvent, void*) {
  const auto it = std::ranges::find_if(Guards(), [&](const auto* o) { return o->IsIgnoredClose(*oEvent); });
  if (it == Guards().end()) return gtk_main_do_event(oEvent);
  (*it)->m_bClosing = true;
  (*it)->GoOn();
}

int CloseGuard::FilterEvent(wxEvent& oEvent) {
  Watch();
  if (oEvent.GetEventType() != wxEVT_CLOSE_WINDOW || Window() == nullptr || oEvent.GetEventObject() != Window() ||
      (!m_oPump.Waiting() && InnermostDialog() == nullptr)) {
    return Event_Skip;
  }
  auto& oClose = static_cast<wxCloseEvent&>(oEvent);
  if (!oClose.CanVeto()) {
    m_oPump.EndWaits(std::make_exception_ptr(ClosingError("The program is closing")));
    return Event_Skip;
  }
  oClose.Veto();
  m_bClosing = true;
  GoOn();
  return Event_Processed;
}

int CloseGuard::Enter(wxDialog* oDialog) {
  const wxWindow* oOwner = oDialog->GetParent();
  while (oOwner != nullptr && oOwner != Window()) oOwner = oOwner->GetParent();
  return m_bClosing && oOwner != nullptr ? static_cast<int>(wxID_CANCEL) : static_cast<int>(wxID_NONE);
}

GtkWidget* CloseGuard::InnermostDialog() const {
  GtkWidget* oGrabbing = gtk_grab_get_current();
  if (oGrabbing == nullptr || Window() == nullptr) return nullptr;
  GtkWidget* oInnermost = gtk_widget_get_toplevel(oGrabbing);
  // Menus and lists that drop down are parts of the window that they belong to.
  const auto Owner = [](GtkWidget* o) { return GTK_WIDGET(gtk_window_get_transient_for(GTK_WINDOW(o))); };
  while (GTK_IS_WINDOW(oInnermost) && gtk_window_get_window_type(GTK_WINDOW(oInnermost)) == GTK_WINDOW_POPUP) {
    oInnermost = Owner(oInnermost);
  }
  for (GtkWidget* o = oInnermost; GTK_IS_WINDOW(o); o = Owner(o)) {
    if (o == Window()->GetHandle()) return o == oInnermost ? nullptr : oInnermost;
  }
  return nullptr;
}

bool CloseGuard::IsIgnoredClose(const GdkEvent& oEvent) const {
  wxWindow* oWindow = Window();
  if (oWindow == nullptr) return false;
  const bool bButton = oEvent.type == GDK_DELETE && oEvent.any.window == gtk_widget_get_window(oWindow->GetHandle());
  if (!bButton && !IsQuitKey(oWindow, oEvent)) return false;
  GtkWidget* oGrabbing = gtk_grab_get_current();
  const bool bElsewhere = oGrabbing != nullptr && gtk_widget_get_toplevel(oGrabbing) != oWindow->GetHandle();
  return bElsewhere && (m_oPump.Waiting() || InnermostDialog() != nullptr || GTK_IS_MENU_SHELL(oGrabbing));
}

void CloseGuard::GoOn() {
  wxWindow* oWindow = Window();
  if (!m_bClosing || oWindow == nullptr) return;
  m_oPump.EndWaits(std::make_exception_ptr(ClosingError("The program is closing")));
  if (GtkWidget* oGrabbing = gtk_grab_get_current(); GTK_IS_MENU_SHELL(oGrabbing)) {
    gtk_menu_shell_cancel(GTK_MENU_SHELL(oGrabbing));
  }
  if (GtkWidget* oDialog = InnermostDialog()) {
    ClickCloseButton(oDialog);
    m_oNext.StartOnce(10);
  } else if (m_oPump.Waiting()) {
    m_oPump.AfterWaits([this, oAlive = std::weak_ptr(m_oAlive)] {
      if (!oAlive.expired()) GoOn();
    });
  } else {
    m_bClosing = false;
    oWindow->Close();
  }
}

}  // namespace ZELWbr3::Desktop
