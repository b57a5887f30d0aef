#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/desktop/ListExport.h"
#include "zelwbr3/desktop/Theme.h"
#include "zelwbr3/desktop/WebView.h"
#include "zelwbr3/platform/WebBrowser.h"
#include "zelwbr3/remote/PageOrigin.h"
#include "zelwbr3/remote/RemoteDocument.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <wx/panel.h>
#include <wx/weakref.h>

namespace ZELWbr3::Desktop {

class DesktopPlatform;

/// One frame on a real browser: a panel as picture box and, from the first
/// navigation on, a web view in it.
///
/// A page that is shown again is not loaded again if that would make no
/// difference: the agent puts the document back to what it was at the load.
class ZELWBR3_EXPORT DesktopWebBrowser : public WebBrowser, private WebViewEvents, private Remote::Channel {
 public:
  DesktopWebBrowser(DesktopPlatform& oPlatform, WebBrowserEvents& oEvents);
  /// The same in another window than the control's.
  DesktopWebBrowser(DesktopPlatform& oPlatform, wxWindow& oParent, WebBrowserEvents& oEvents);
  ~DesktopWebBrowser() override;

  void PageFolders(const std::vector<std::string>& folders) override { m_pageFolders = folders; }
  void Navigate(const std::string& sURL, NavigateFlags eFlags) override;
  void Refresh(const std::string& sURL) override;
  std::shared_ptr<ZELWbr3::Document> Document() const override { return m_oRemote.Document(); }
  void Flush() override { m_oRemote.Flush(); }
  bool Settled() const override { return m_oRemote.Settled(); }
  bool IsBehind() const override { return m_oRemote.IsBehind(); }
  void Visible(bool bVisible) override;
  void Move(int iLeft, int iTop, int iWidth, int iHeight) override;

  bool IsVisible() const { return m_oBox != nullptr && m_oBox->IsShown(); }
  /// Follows the platform's theme.
  void ThemeChanged();
  /// Lets the frames of the page show what is in this compiled help file.
  void HelpFile(const std::string& sCHMPath);
  /// Copies what is selected to the clipboard.
  void Copy();
  /// Lets the user print the page, also to a file.
  void Print();
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
  /// Calls oDone with whether the user is doing something in the page that a refresh
  /// would disturb: has selected text, or holds a mouse button.
  void AskIfInUse(std::function<void(bool)> oDone);
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

  void Export(std::string_view sPiece) override;
  void SendBatch(std::uint32_t iSerial, std::uint32_t iBatch, const std::string& sList) override;
  void Later(std::function<void()> oTask) override;
  void Loaded(const ZELWbr3::Document& oDocument) override { m_oOrigin.Loaded(oDocument); }
  void Ready() override { ThemeChanged(); }

  /// A load of this URL would only give the present document as it was at first.
  bool BeginsAgainAs(const std::string& sURL) const;
  /// Begins to load a page and returns the load's number.
  std::uint32_t Load(const std::string& sURL);
  /// Shows the document's own page again without loading it: sHow is the agent's
  /// operation, Reset or Refresh. Returns the number of the fresh document.
  std::uint32_t Again(const std::string& sHow, const std::string& sURL);
  WebView& NeedView();

  DesktopPlatform& m_oPlatform;
  WebBrowserEvents& m_oEvents;
  /// Its parent may destroy it before this object.
  wxWeakRef<wxPanel> m_oBox;
  std::unique_ptr<WebView> m_oView;
  Remote::PageOrigin m_oOrigin;
  std::vector<std::string> m_pageFolders;
  Desktop::Theme m_eLoadTheme = Desktop::Theme::Light;
  Remote::RemoteDocument m_oRemote;
  ListExport m_oExport;
};

}  // namespace ZELWbr3::Desktop
