#include "zelwbr3/desktop/InputGrab.h"

#include <utility>

namespace ZELWbr3::Desktop {

namespace {

bool IsInput(const GdkEvent& oEvent) {
  switch (oEvent.type) {
    case GDK_KEY_PRESS:
    case GDK_KEY_RELEASE:
    case GDK_BUTTON_PRESS:
    case GDK_BUTTON_RELEASE:
    case GDK_SCROLL:
      return true;
    default:
      return false;
  }
}

}  // namespace

InputGrab::InputGrab(std::function<void()> oEscape) : m_oNowhere(gtk_invisible_new()), m_oEscape(std::move(oEscape)) {
  if (m_oEscape) g_signal_connect(m_oNowhere, "event", G_CALLBACK(OnEvent), this);
  gtk_widget_show(m_oNowhere);
  gtk_grab_add(m_oNowhere);
}

InputGrab::~InputGrab() {
  gtk_grab_remove(m_oNowhere);
  gtk_widget_destroy(m_oNowhere);
  for (GdkEvent* oEvent : m_oKept) {
    if (!m_bEscaped) gdk_event_put(oEvent);
    gdk_event_free(oEvent);
  }
}

gboolean InputGrab::OnEvent(GtkWidget*, GdkEvent* oEvent, gpointer pThis) {
  auto& oThis = *static_cast<InputGrab*>(pThis);
  if (oEvent->type == GDK_KEY_PRESS && oEvent->key.keyval == GDK_KEY_Escape) {
    oThis.m_bEscaped = true;
    oThis.m_oEscape();
  } else if (IsInput(*oEvent)) {
    oThis.m_oKept.push_back(gdk_event_copy(oEvent));
  }
  return TRUE;
}

}  // namespace ZELWbr3::Desktop
