#pragma once

#include <gtk/gtk.h>

namespace ZELWbr3::Desktop {

/// Keeps clicks, keys and the windows' close buttons from the program while it
/// lives. Unlike disabled windows, the windows look as before.
///
/// The toolkit knows this as a grab: all input goes to one widget, here to one
/// that is nowhere on the screen.
class InputGrab {
 public:
  InputGrab() : m_oNowhere(gtk_invisible_new()) {
    gtk_widget_show(m_oNowhere);
    gtk_grab_add(m_oNowhere);
  }
  ~InputGrab() {
    gtk_grab_remove(m_oNowhere);
    gtk_widget_destroy(m_oNowhere);
  }
  InputGrab(const InputGrab&) = delete;
  InputGrab& operator=(const InputGrab&) = delete;

 private:
  GtkWidget* m_oNowhere;
};

}  // namespace ZELWbr3::Desktop
