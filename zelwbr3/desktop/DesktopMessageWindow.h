#pragma once

#include "zelwbr3/platform/MessageWindow.h"

#include <memory>
#include <string>
#include <type_traits>  // wx/weakref.h needs it without saying so

#include <wx/dialog.h>
#include <wx/weakref.h>

namespace ZELWbr3::Desktop {

class DesktopPlatform;
class DesktopWebBrowser;

/// The message window as a dialog of the toolkit. It goes in front of a message
/// box or dialog of the control that offers help and stays open.
class DesktopMessageWindow : public MessageWindow {
 public:
  DesktopMessageWindow(DesktopPlatform& oPlatform, MessageWindowEvents& oEvents);
  ~DesktopMessageWindow() override;

  ZELWbr3::WebBrowser& WebBrowser() override;
  void CHMPath(const std::string& sPath) override;
  void ShowModal() override;

 private:
  void OnKey(wxKeyEvent& oEvent);
  void OnSize(wxSizeEvent& oEvent);

  MessageWindowEvents& m_oEvents;
  /// Its parent may destroy it before this object.
  wxWeakRef<wxDialog> m_oDialog;
  std::unique_ptr<DesktopWebBrowser> m_oBrowser;
};

}  // namespace ZELWbr3::Desktop
