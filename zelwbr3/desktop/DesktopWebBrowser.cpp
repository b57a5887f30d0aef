#include "zelwbr3/desktop/DesktopWebBrowser.h"

#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/PageFolders.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/platform/MessagePump.h"
#include "zelwbr3/remote/AgentSource.h"
#include "zelwbr3/remote/FileURL.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Desktop {

namespace {

const char* ThemeName(Theme eTheme) { return eTheme == Theme::Dark ? "dark" : "light"; }

/// What the agent needs of a web view, as the script in front of it.
std::string AgentHost(Theme eTheme) {
  return R"(const zelwbr3Host = {
  Theme: ")" +
         std::string(ThemeName(eTheme)) +
         R"(",
  IsFrame: window !== window.top,
  // The view puts its navigation's number into the URL.
  Serial: () => Number(/[?&]zelwbr3=(\d+)/.exec(location.href)?.[1] ?? 0),
  Post: (sMessage) => webkit.messageHandlers.zelwbr3.postMessage(sMessage),
  // Files and the clipboard are the program's matter.
  Exports: true,
  Attach: (oAgent) => { globalThis.zelwbr3 = oAgent; },
};
)";
}

/// The picture box. The toolkit must not look for the keyboard's target in it,
/// for it does not know the web view: the control's own window is that target
/// and passes the keyboard on. The Tab key goes through it to the web view.
class PictureBox : public wxPanel {
 public:
  using wxPanel::wxPanel;
  bool AcceptsFocus() const override { return false; }
  bool AcceptsFocusFromKeyboard() const override { return true; }
  bool AcceptsFocusRecursively() const override { return false; }
};

}  // namespace

DesktopWebBrowser::DesktopWebBrowser(DesktopPlatform& oPlatform, WebBrowserEvents& oEvents)
    : DesktopWebBrowser(oPlatform, *oPlatform.Parent(), oEvents) {}

DesktopWebBrowser::DesktopWebBrowser(DesktopPlatform& oPlatform, wxWindow& oParent, WebBrowserEvents& oEvents)
    : m_oPlatform(oPlatform), m_oEvents(oEvents), m_oRemote(oEvents, *this), m_oExport(oPlatform) {
  m_oBox = new PictureBox(&oParent, wxID_ANY, wxDefaultPosition, oParent.GetClientSize(), wxBORDER_NONE);
  m_oBox->Hide();
  m_oPlatform.Watch(*this, true);
}

DesktopWebBrowser::~DesktopWebBrowser() {
  m_oPlatform.Watch(*this, false);
  m_oView.reset();
  if (m_oBox != nullptr) m_oBox->Destroy();
}

WebView& DesktopWebBrowser::NeedView() {
  if (m_oBox == nullptr) throw WaitError("The window of the control is gone");
  if (m_oView == nullptr) {
    m_oView = std::make_unique<WebView>(*m_oBox, m_oPlatform.Context(), static_cast<WebViewEvents&>(*this));
    ThemeChanged();
  }
  return *m_oView;
}

void DesktopWebBrowser::Navigate(const std::string& sURL, NavigateFlags eFlags) {
  NeedView();
  const bool bAgain = eFlags == NavigateFlags::Fresh && BeginsAgainAs(sURL);
  if (bAgain) {
    m_oRemote.BeginAgain(Again("Reset", sURL));
  } else {
    m_oRemote.BeginLoad(Load(sURL));
  }
}

void DesktopWebBrowser::Refresh(const std::string& sURL) {
  if (m_oView == nullptr || !BeginsAgainAs(sURL)) return Navigate(sURL, NavigateFlags::Fresh);
  m_oRemote.BeginRefresh(Again("Refresh", sURL));
}

bool DesktopWebBrowser::BeginsAgainAs(const std::string& sURL) const {
  // In another theme it would be seen in its old one first.
  return m_oRemote.IsLoaded() && m_eLoadTheme == m_oPlatform.Theme() && m_oOrigin.IsStill(Remote::FilePath(sURL));
}

std::uint32_t DesktopWebBrowser::Load(const std::string& sURL) {
  m_eLoadTheme = m_oPlatform.Theme();
  m_oOrigin = Remote::PageOrigin(Remote::FilePath(sURL));
  if (m_pageFolders.size() > 1) {
    if (const auto sHTML = WithFolders(Remote::FilePath(sURL), m_pageFolders)) {
      return m_oView->Load(Remote::MakeURL(sURL), *sHTML);
    }
  }
  return m_oView->Load(Remote::MakeURL(sURL));
}

std::uint32_t DesktopWebBrowser::Again(const std::string& sHow, const std::string& sURL) {
  const std::uint32_t iOld = m_oRemote.Serial();
  const std::uint32_t iNew = m_oView->NewNumber();
  const std::string sScript = "try { zelwbr3." + sHow + "(" + std::to_string(iOld) + "," + std::to_string(iNew) +
                              ") } catch (o) { `failed: ${o}` }";
  m_oView->Run(sScript, [this, sURL, iNew](const WebView::Outcome& oOutcome) {
    // No answer at all comes from a process that has died, which is reported by itself.
    if (oOutcome.Result.empty() || m_oRemote.Serial() != iNew) return;
    Trace("A page could not begin again and is loaded: " + oOutcome.Result);
    m_oRemote.LoadInstead(Load(sURL));
  });
  return iNew;
}

void DesktopWebBrowser::Later(std::function<void()> oTask) {
  if (m_oBox == nullptr) return;
  m_oBox->CallAfter([&oPump = m_oPlatform.Pump(), oTask = std::move(oTask)] { oPump.Deliver(oTask); });
}

void DesktopWebBrowser::Visible(bool bVisible) {
  if (m_oBox == nullptr) return;
  m_oBox->Show(bVisible);
  if (!bVisible) return;
  m_oBox->Raise();
  // The keyboard goes with the frame, unless another part of the program has it.
  if (wxWindow::FindFocus() == nullptr) Focus();
}

void DesktopWebBrowser::Move(int iLeft, int iTop, int iWidth, int iHeight) {
  if (m_oBox != nullptr) m_oBox->SetSize(iLeft, iTop, std::max(iWidth, 0), std::max(iHeight, 0));
}

void DesktopWebBrowser::HelpFile(const std::string& sCHMPath) { NeedView().HelpFile(sCHMPath); }

void DesktopWebBrowser::Export(std::string_view sPiece) {
  if (m_oExport.Take(sPiece) != ListExport::Wish::Print) return;
  if (m_oBox != nullptr)
    m_oBox->CallAfter([oBox = m_oBox, this] {
      if (oBox != nullptr) Print();
    });
}

void DesktopWebBrowser::Print() {
  if (m_oView != nullptr) m_oView->Print();
}

void DesktopWebBrowser::Copy() {
  if (m_oView != nullptr) m_oView->Copy();
}

void DesktopWebBrowser::Focus() {
  if (m_oView != nullptr) m_oView->Focus();
}

void DesktopWebBrowser::Enter(bool bForward) {
  Focus();
  if (!m_oRemote.IsLoaded()) return;  // no document to ask
  m_oView->Run(std::string("zelwbr3.Enter(") + (bForward ? "true" : "false") + ")", [](const WebView::Outcome&) {});
}

void DesktopWebBrowser::ThemeChanged() {
  const Desktop::Theme eTheme = m_oPlatform.Theme();
  if (m_oView != nullptr) {
    m_oView->Agent(AgentHost(eTheme) + std::string(Remote::AgentSource));
    m_oView->Background(eTheme == Theme::Dark ? 0x14181D : 0xFFFFFF);
  }
  m_oRemote.Theme(ThemeName(eTheme));
}

void DesktopWebBrowser::Message(std::string_view sMessage) {
  m_oPlatform.Pump().Deliver([&] { m_oRemote.Handle(sMessage); });
}

void DesktopWebBrowser::SendBatch(std::uint32_t iSerial, std::uint32_t iBatch, const std::string& sList) {
  // The list is JSON, which is part of the script's language.
  const std::string sScript =
      "zelwbr3.Apply(" + std::to_string(iSerial) + "," + std::to_string(iBatch) + "," + sList + ")";
  // The completion is the acknowledgement: it comes in the order of the
  // batches, also when the script failed or its process died, so the flow
  // cannot come to a halt.
  m_oView->Run(sScript, [this, iSerial, iBatch](const WebView::Outcome& oOutcome) {
    if (!oOutcome.Error.empty()) Trace("A batch of changes was not carried out: " + oOutcome.Error);
    if (!oOutcome.Result.empty()) Trace("Some changes were not made: " + oOutcome.Result);
    m_oRemote.Acknowledge(iSerial, iBatch);
  });
}

bool DesktopWebBrowser::KeyPress(const Key& oKey) {
  bool bSwallow = false;
  m_oPlatform.Pump().Deliver([&] { bSwallow = m_oRemote.KeyPress(oKey.Code, oKey.Modified); });
  return bSwallow;
}

void DesktopWebBrowser::ProcessTerminated(const std::string& sReason) {
  m_oRemote.Lose();
  m_oPlatform.Pump().Deliver([&] { m_oEvents.ProcessTerminated(sReason); });
}

void DesktopWebBrowser::Trace(const std::string& sText) { m_oPlatform.Trace(sText); }

void DesktopWebBrowser::AfterPaint(std::function<void()> oDone) {
  if (m_oView == nullptr || m_oBox == nullptr || !m_oBox->IsShownOnScreen()) return oDone();
  m_oView->AfterPaint(std::move(oDone));
}

void DesktopWebBrowser::AskIfInUse(std::function<void(bool)> oDone) {
  if (m_oView == nullptr || !m_oRemote.IsLoaded()) return oDone(false);
  m_oView->Run("zelwbr3.InUse()", [oDone = std::move(oDone)](const WebView::Outcome& o) { oDone(o.Result == "true"); });
}

void DesktopWebBrowser::LiveDocument(std::function<void(const std::string&)> oDone) {
  if (m_oView == nullptr) return oDone("");
  m_oView->Run("zelwbr3.Live()", [oDone = std::move(oDone)](const WebView::Outcome& o) { oDone(o.Result); });
}

}  // namespace ZELWbr3::Desktop
