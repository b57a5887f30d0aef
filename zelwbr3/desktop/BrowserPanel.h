#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/shell/Browser.h"

#include <memory>

#include <wx/panel.h>

namespace ZELWbr3::Desktop {

class DesktopPlatform;

/// The control for a program with wxWidgets: a panel like any other, to be
/// placed in a sizer. Given the keyboard, it hands it to the page in front. The
/// Tab key enters the page at its first element and leaves it after the last.
///
///     auto* oPanel = new BrowserPanel(oFrame);
///     oPanel->Browser().HTMLPath("/usr/share/zelwbr3/html");
///     oPanel->Browser().PageMain()->Show(oDatabase);
///
/// Showing a page waits in the toolkit's loop, which must be running: not in
/// wxApp::OnInit, but in what that hands to CallAfter. It pumps messages. When the panel is destroyed during that, the
/// wait ends with WaitError; the control itself lives on, invisible, until the
/// waiting code has returned.
class ZELWBR3_EXPORT BrowserPanel : public wxPanel {
 public:
  explicit BrowserPanel(wxWindow* oParent, wxWindowID iID = wxID_ANY);
  ~BrowserPanel() override;

  ZELWbr3::Browser& Browser();
  DesktopPlatform& Platform();

  void SetFocus() override;
  void SetFocusFromKbd() override;
  /// The toolkit asks when there is no page yet.
  bool AcceptsFocusFromKeyboard() const override { return true; }

  /// The page in front has the keyboard.
  bool PageHasFocus() const;
  /// Gives a key to the page in front that another window of the program has
  /// received, such as Escape. True if the page has handled it.
  bool KeyToPage(const wxKeyEvent& oEvent);

 private:
  struct Control;

  void OnSize(wxSizeEvent& oEvent);
  void OnKeyDown(wxKeyEvent& oEvent);
  void OnKeyUp(wxKeyEvent& oEvent);
  void OnChar(wxKeyEvent& oEvent);
  /// A handler that takes the key keeps it from the program's other windows.
  void PassOn(const Event<Integer&, Integer&>& oRaised, wxKeyEvent& oEvent);

  std::shared_ptr<Control> m_oControl;
};

}  // namespace ZELWbr3::Desktop
