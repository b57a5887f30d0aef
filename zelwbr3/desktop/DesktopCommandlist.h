#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/CommandLists.h"

#include <functional>
#include <vector>

#include <wx/bmpbndl.h>
#include <wx/panel.h>
#include <wx/weakref.h>

namespace ZELWbr3::Desktop {

class BrowserPanel;
class DesktopPump;

/// A command list drawn as a row of buttons, which wraps when it is narrow. A
/// mnemonic works with Alt from everywhere in the window. The window is
/// destroyed by its parent, as windows are; the list may outlive it.
class ZELWBR3_EXPORT DesktopCommandlist : public CommandLists {
 public:
  /// The picture with a number; an empty bundle for none.
  using Pictures = std::function<wxBitmapBundle(Long)>;

  /// oPump is that of the control whose commands are listed, and outlives the
  /// window: what a click throws goes where the control's own errors go.
  DesktopCommandlist(wxWindow& oParent, DesktopPump& oPump, Pictures oPictures = {});
  /// The same, with the control named by its panel.
  DesktopCommandlist(wxWindow& oParent, BrowserPanel& oPanel, Pictures oPictures = {});
  ~DesktopCommandlist() override;

  /// Items with pictures are drawn as those alone, with their texts as tooltips.
  void Compact(bool bCompact);

  /// The window to be placed in a sizer; null when it is gone. It is never lower
  /// than a button, so that what is below it stays where it is.
  wxWindow* Window() const { return m_oBar; }

 private:
  /// Pages change their list item by item: it is drawn once, later.
  void ItemsChanged() override;
  void Draw();
  /// An item has the keyboard.
  bool HasFocus() const;
  /// Draws everything again, once.
  void DrawAnew();
  wxWindow* MakeButton(const ZELCmd3::CommandItem& oItem);

  wxWeakRef<wxPanel> m_oBar;
  DesktopPump& m_oPump;
  Pictures m_oPictures;
  std::vector<ZELCmd3::CommandItem> m_oShown;
  std::vector<wxWindow*> m_oButtons;  ///< one for each item shown
  bool m_bDrawing = false;
  bool m_bCompact = false;
};

}  // namespace ZELWbr3::Desktop
