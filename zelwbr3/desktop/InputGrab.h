#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <vector>

namespace ZELWbr3::Desktop {

/// Keeps clicks, keys and the windows' close buttons from the program while it
/// lives. Unlike disabled windows, the windows look as before.
///
/// The toolkit knows this as a grab: all input goes to one widget, here to one
/// that is nowhere on the screen.
class InputGrab {
 public:
  /// Without oEscape the input is lost. With it, Escape calls it, and other input
  /// is given to the program afterwards, unless Escape was pressed.
  explicit InputGrab(std::function<void()> oEscape = {});
  ~InputGrab();
  InputGrab(const InputGrab&) = delete;
  InputGrab& operator=(const InputGrab&) = delete;

 private:
  static gboolean OnEvent(GtkWidget*, GdkEvent* oEvent, gpointer pThis);

  GtkWidget* m_oNowhere;
  std::function<void()> m_oEscape;
  bool m_bEscaped = false;
  std::vector<GdkEvent*> m_oKept;
};

}  // namespace ZELWbr3::Desktop
