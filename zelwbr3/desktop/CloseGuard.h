#pragma once

#include <type_traits>  // wx/weakref.h needs it without saying so

#include <wx/eventfilter.h>
#include <wx/weakref.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

class DesktopPump;

/// Holds back the closing of a window for as long as somebody waits in it:
/// the waits are ended, and the window is closed again when they are over.
///
/// A filter and not a handler, so that it comes before the program's own
/// handlers in whatever order they were bound.
class CloseGuard : public wxEventFilter {
 public:
  /// oParent is a window in the one to be guarded.
  CloseGuard(wxWindow& oParent, DesktopPump& oPump);
  ~CloseGuard() override;

  int FilterEvent(wxEvent& oEvent) override;

 private:
  wxWeakRef<wxWindow> m_oParent;
  DesktopPump& m_oPump;
};

}  // namespace ZELWbr3::Desktop
