#pragma once

#include <memory>
#include <type_traits>  // wx/weakref.h needs it without saying so

#include <wx/eventfilter.h>
#include <wx/modalhook.h>
#include <wx/timer.h>
#include <wx/weakref.h>
#include <wx/window.h>

typedef union _GdkEvent GdkEvent;
typedef struct _GtkWidget GtkWidget;

namespace ZELWbr3::Desktop {

class DesktopPump;

/// Lets a window be closed at any moment. While code waits in it, the close is
/// held back: the waits are ended with ClosingError. Modal dialogs on it are
/// closed first, the innermost before the others, which gives their cancelling
/// answer; until the window has been closed, no further dialog opens on it.
///
/// The toolkit ignores the close button of a window that has a modal dialog, or
/// that waits for background work, and the key of the menu item wxID_EXIT: both
/// are seen here before the toolkit.
///
/// An event filter and not a handler, so that it comes before the program's own
/// handlers in whatever order they were bound.
class CloseGuard : public wxEventFilter, private wxModalDialogHook {
 public:
  /// oParent is a window in the one to be guarded.
  CloseGuard(wxWindow& oParent, DesktopPump& oPump);
  ~CloseGuard() override;

  int FilterEvent(wxEvent& oEvent) override;

  /// Sees native events before the toolkit, which puts its own handler back
  /// whenever it yields: to be called again and again.
  static void Watch();

 private:
  static void HandleNative(GdkEvent* oEvent, void*);

  int Enter(wxDialog* oDialog) override;
  void Exit(wxDialog*) override {}

  wxWindow* Window() const { return wxGetTopLevelParent(m_oParent); }
  /// The native window of the innermost modal dialog on the guarded window;
  /// null when there is none.
  GtkWidget* InnermostDialog() const;
  /// The event asks to close the guarded window and the toolkit would ignore it.
  bool IsIgnoredClose(const GdkEvent& oEvent) const;
  /// Closes the window, or does what has to be done first and comes back.
  void GoOn();

  wxWeakRef<wxWindow> m_oParent;
  DesktopPump& m_oPump;
  bool m_bClosing = false;
  /// Runs out when a dialog that was closed has had the time to end.
  wxTimer m_oNext;
  std::shared_ptr<bool> m_oAlive = std::make_shared<bool>(true);
};

}  // namespace ZELWbr3::Desktop
