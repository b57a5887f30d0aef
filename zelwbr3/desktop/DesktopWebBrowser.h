#pragma once

#include "zelwbr3/desktop/ChangeSender.h"
#include "zelwbr3/desktop/PageOrigin.h"
#include "zelwbr3/desktop/Theme.h"
#include "zelwbr3/desktop/WebView.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/platform/WebBrowser.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <wx/panel.h>
#include <wx/weakref.h>

namespace ZELWbr3::Desktop {

class DesktopPlatform;

/// One frame on a real browser: a panel as picture box and, from the first
/// navigation on, a web view in it.
///
/// The document that is worked on is a replica in this process. The agent in
/// the page sends a snapshot when a document has loaded; writes to the replica
/// go to the page through a ChangeSender; clicks and focus come back by element
/// number. Every load has a number, and what a document says or is sent carries
/// it, so that nothing can reach another document than the one it is about.
///
/// A page that is shown again is not loaded again if that would make no
/// difference: the agent puts the document back to what it was at the load. Such
/// a reset has a number and reports everything as a load does.
class DesktopWebBrowser : public WebBrowser, private WebViewEvents {
 public:
  DesktopWebBrowser(DesktopPlatform& oPlatform, WebBrowserEvents& oEvents);
  /// The same in another window than the control's.
  DesktopWebBrowser(DesktopPlatform& oPlatform, wxWindow& oParent, WebBrowserEvents& oEvents);
  ~DesktopWebBrowser() override;

  void Navigate(const std::string& sURL, NavigateFlags eFlags) override;
  std::shared_ptr<ZELWbr3::Document> Document() const override { return m_oDocument; }
  void Flush() override;
  bool Settled() const override { return m_oSender == nullptr || m_oSender->Settled(); }
  bool IsBehind() const override { return m_oSender != nullptr && m_oSender->IsBehind(); }
  void Visible(bool bVisible) override;
  void Move(int iLeft, int iTop, int iWidth, int iHeight) override;

  bool IsVisible() const { return m_oBox != nullptr && m_oBox->IsShown(); }
  /// Follows the platform's theme.
  void ThemeChanged();
  /// Lets the frames of the page show what is in this compiled help file.
  void HelpFile(const std::string& sCHMPath);
  /// Copies what is selected to the clipboard.
  void Copy();
  /// Gives the keyboard to the page.
  void Focus();
  /// Gives it to the first element that the Tab key comes by, or to the last.
  void Enter(bool bForward) override;
  bool HasFocus() const { return m_oView != nullptr && m_oView->HasFocus(); }
  /// A key for the page, wherever it was pressed. True if it was handled.
  bool KeyPress(const Key& oKey) override;
  /// Calls oDone once what has been sent so far has been painted; at once when
  /// there is nothing to paint.
  void AfterPaint(std::function<void()> oDone);
  /// Calls oDone with the browser's own document as it stands, as a flat list
  /// in the form of the agent's snapshot; the empty text when there is none.
  /// For tests and support: it must equal the replica.
  void LiveDocument(std::function<void(const std::string&)> oDone);
  /// Null until the first navigation.
  WebView* View() const { return m_oView.get(); }

 private:
  void Message(std::string_view sMessage) override;
  void ProcessTerminated(const std::string& sReason) override;
  void Trace(const std::string& sText) override;

  /// A message's text, without what only Deliver can do with an exception.
  void Handle(std::string_view sMessage);
  /// A load of this URL would only give the present document as it was at first.
  bool BeginsAgainAs(const std::string& sURL) const;
  void Load(const std::string& sURL);
  /// Shows the document's own page again without loading it.
  void Reset(const std::string& sURL);
  /// Builds the replica from the snapshot and tells that it is there.
  void Loaded();
  /// Tells about a navigation that has begun, if that has not been done.
  void Announce();
  void DropDocument();
  WebView& NeedView();

  DesktopPlatform& m_oPlatform;
  WebBrowserEvents& m_oEvents;
  /// Its parent may destroy it before this object.
  wxWeakRef<wxPanel> m_oBox;
  std::unique_ptr<WebView> m_oView;
  std::shared_ptr<ZELWbr3::Document> m_oDocument;
  std::shared_ptr<ChangeSender> m_oSender;
  PageOrigin m_oOrigin;
  /// The message with the snapshot of the document as it was at its load.
  std::string m_sLoad;
  Desktop::Theme m_eLoadTheme = Desktop::Theme::Light;
  /// The document is one that begins again.
  bool m_bReset = false;
  std::uint32_t m_iSerial = 0;
  bool m_bAnnounced = true;
  /// A search field with a text in it has the keyboard; Escape empties it.
  bool m_bPageTakesEscape = false;
  bool m_bPageTakesEnter = false;
};

}  // namespace ZELWbr3::Desktop
