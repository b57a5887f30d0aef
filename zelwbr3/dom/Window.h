#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"

namespace ZELWbr3 {

/// The event that a window is handling: a key press.
struct WindowEvent {
  Long keyCode;
  /// False keeps the browser from acting on the key.
  bool returnValue = true;
};

/// The window that a document stands in.
class ZELWBR3_EXPORT Window {
 public:
  /// Null while no event is being handled.
  WindowEvent* event() const { return m_oEvent; }

  /// Escape ends what the program is doing, even where the page's own script would
  /// act on it, as a search field does.
  bool TakesEscape() const { return m_bTakesEscape; }
  void TakesEscape(bool bTakes) { m_bTakesEscape = bTakes; }

 private:
  friend class CurrentEvent;
  WindowEvent* m_oEvent = nullptr;
  bool m_bTakesEscape = false;
};

/// Makes an event the window's current one for the lifetime of this object.
class ZELWBR3_EXPORT CurrentEvent {
 public:
  CurrentEvent(Window& oWindow, WindowEvent& oEvent) : m_oWindow(oWindow), m_oPrevious(oWindow.m_oEvent) {
    oWindow.m_oEvent = &oEvent;
  }
  ~CurrentEvent() { m_oWindow.m_oEvent = m_oPrevious; }
  CurrentEvent(const CurrentEvent&) = delete;
  CurrentEvent& operator=(const CurrentEvent&) = delete;

 private:
  Window& m_oWindow;
  WindowEvent* m_oPrevious;
};

}  // namespace ZELWbr3
