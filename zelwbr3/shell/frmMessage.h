#pragma once

#include "zelwbr3/platform/MessageWindow.h"
#include "zelwbr3/platform/Platform.h"

#include <memory>
#include <string>

namespace ZELWbr3 {

/// The message window: explains a message with a topic of the compiled help file.
/// Its browser shows the page file Message.htm, whose inline frame "Message1.Txt"
/// gets the topic's URL. Clicks and keys do nothing in it.
class frmMessage : private MessageWindowEvents {
 public:
  explicit frmMessage(Platform& oPlatform) : m_oPlatform(oPlatform) {}
  frmMessage(const frmMessage&) = delete;
  frmMessage& operator=(const frmMessage&) = delete;

  /// Folder of the page files, without a trailing separator.
  void HTMLPath(const std::string& sPath) { m_sHTMLPath = sPath; }
  /// Path of the compiled help file.
  void CHMPath(const std::string& sPath) { m_sCHMPath = sPath; }

  /// Shows the topic sHelpID + ".htm" and returns when the user has closed the
  /// window. If the topic or page file does not exist, the browser says so.
  void ShowMessageHelpID(const std::string& sHelpID);

 private:
  void BeforeNavigate(bool) override {}
  void NavigateComplete() override {}
  void DocumentComplete(bool bTopLevel) override;
  void Click() override {}
  bool KeyDown() override { return false; }
  void ProcessTerminated(const std::string& sReason) override;
  void Resize(int iWidth, int iHeight) override;

  Platform& m_oPlatform;
  std::string m_sHTMLPath;
  std::string m_sCHMPath;
  std::string m_sTopicURL;
  std::unique_ptr<MessageWindow> m_oWindow;
};

}  // namespace ZELWbr3
