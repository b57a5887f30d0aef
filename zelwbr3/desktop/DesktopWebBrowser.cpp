#include "zelwbr3/desktop/DesktopWebBrowser.h"

#include "zelwbr3/desktop/AgentSource.h"
#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/FileURL.h"
#include "zelwbr3/desktop/Script.h"
#include "zelwbr3/desktop/Snapshot.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/KeyClick.h"
#include "zelwbr3/framework/KeyCode.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Desktop {

namespace {

const char* ThemeName(Theme eTheme) { return eTheme == Theme::Dark ? "dark" : "light"; }

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
    : m_oPlatform(oPlatform), m_oEvents(oEvents) {
  m_oBox = new PictureBox(&oParent, wxID_ANY, wxDefaultPosition, oParent.GetClientSize(), wxBORDER_NONE);
  m_oBox->Hide();
  m_oPlatform.m_oBrowsers.push_back(this);
}

DesktopWebBrowser::~DesktopWebBrowser() {
  std::erase(m_oPlatform.m_oBrowsers, this);
  if (m_oDocument != nullptr) m_oDocument->ReportTo(nullptr);
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
  DropDocument();
  if (bAgain) {
    Reset(sURL);
  } else {
    Load(sURL);
  }
  m_bAnnounced = false;
  m_oBox->CallAfter([this] { m_oPlatform.Pump().Deliver([this] { Announce(); }); });
}

bool DesktopWebBrowser::BeginsAgainAs(const std::string& sURL) const {
  // In another theme it would be seen in its old one first.
  return m_oSender != nullptr && m_eLoadTheme == m_oPlatform.Theme() && m_oOrigin.IsStill(FilePath(sURL));
}

void DesktopWebBrowser::Load(const std::string& sURL) {
  m_bReset = false;
  m_eLoadTheme = m_oPlatform.Theme();
  m_oOrigin = PageOrigin(FilePath(sURL));
  m_iSerial = m_oView->Load(MakeURL(sURL));
}

void DesktopWebBrowser::Reset(const std::string& sURL) {
  m_bReset = true;
  const std::uint32_t iNew = m_oView->NewNumber();
  const std::uint32_t iOld = std::exchange(m_iSerial, iNew);
  const std::string sScript =
      "try { zelwbr3.Reset(" + std::to_string(iOld) + "," + std::to_string(iNew) + ") } catch (o) { `failed: ${o}` }";
  m_oView->Run(sScript, [this, sURL, iNew](const WebView::Outcome& oOutcome) {
    // No answer at all comes from a process that has died, which is reported by itself.
    if (oOutcome.Result.empty() || m_iSerial != iNew) return;
    Trace("A page could not begin again and is loaded: " + oOutcome.Result);
    Load(sURL);
  });
}

void DesktopWebBrowser::Announce() {
  if (m_bAnnounced) return;
  m_bAnnounced = true;
  m_oEvents.BeforeNavigate(true);
}

void DesktopWebBrowser::DropDocument() {
  if (m_oDocument != nullptr) m_oDocument->ReportTo(nullptr);
  m_oSender.reset();
  m_bPageTakesEscape = false;
  m_bPageTakesEnter = false;
}

void DesktopWebBrowser::Flush() {
  if (m_oSender != nullptr) m_oSender->Flush();
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

void DesktopWebBrowser::Copy() {
  if (m_oView != nullptr) m_oView->Copy();
}

void DesktopWebBrowser::Focus() {
  if (m_oView != nullptr) m_oView->Focus();
}

void DesktopWebBrowser::Enter(bool bForward) {
  Focus();
  if (m_oSender == nullptr) return;  // no document to ask
  m_oView->Run(std::string("zelwbr3.Enter(") + (bForward ? "true" : "false") + ")", [](const WebView::Outcome&) {});
}

void DesktopWebBrowser::ThemeChanged() {
  const Desktop::Theme eTheme = m_oPlatform.Theme();
  if (m_oView != nullptr) {
    m_oView->Agent("const zelwbr3Theme = '" + std::string(ThemeName(eTheme)) + "';\n" + std::string(AgentSource));
    m_oView->Background(eTheme == Theme::Dark ? 0x14181D : 0xFFFFFF);
  }
  // The attribute is part of the document like any other, so the document
  // shown follows by the same road as every change.
  Element* oRoot = m_oDocument == nullptr ? nullptr : m_oDocument->documentElement();
  if (oRoot != nullptr && oRoot->getAttribute("data-theme") != ThemeName(eTheme)) {
    oRoot->setAttribute("data-theme", ThemeName(eTheme));
    Flush();
  }
}

void DesktopWebBrowser::Message(std::string_view sMessage) {
  m_oPlatform.Pump().Deliver([&] { Handle(sMessage); });
}

void DesktopWebBrowser::Handle(std::string_view sMessage) {
  FlatListReader oList(sMessage);
  const std::string sKind = oList.Text();
  if (sKind == "frame-begin") {
    m_oEvents.BeforeNavigate(false);
    m_oEvents.NavigateComplete();
    return;
  }
  if (sKind == "frame-load") return m_oEvents.DocumentComplete(false);

  // What an earlier document still says is of no interest.
  if (oList.Number() != m_iSerial) return;
  Announce();
  if (sKind == "begin") {
    if (m_bReset) {
      // Nothing more to wait for; but whoever waits for the navigation goes on first.
      m_oBox->CallAfter([this, iSerial = m_iSerial] {
        if (m_iSerial == iSerial) m_oPlatform.Pump().Deliver([this] { Loaded(); });
      });
    }
    m_oEvents.NavigateComplete();
  } else if (sKind == "load") {
    m_sLoad = sMessage;
    Loaded();
  } else if (sKind == "keys") {
    m_bPageTakesEscape = oList.Number() != 0;
    m_bPageTakesEnter = oList.Number() != 0;
  } else if (m_oSender != nullptr) {
    m_oDocument->Activate(m_oDocument->ByNumber(oList.Number()));
    if (sKind == "click") m_oEvents.Click();
  }
}

void DesktopWebBrowser::Loaded() {
  const auto oDocument = std::make_shared<ZELWbr3::Document>();
  FlatListReader oSnapshot(m_sLoad);
  oSnapshot.Text();    // the kind of the message
  oSnapshot.Number();  // and the document's number then
  BuildDocument(oSnapshot, *oDocument);
  if (!m_bReset) m_oOrigin.Loaded(*oDocument);

  const auto Send = [this, iSerial = m_iSerial](std::uint32_t iBatch, const std::string& sList) {
    const std::string sScript =
        "zelwbr3.Apply(" + std::to_string(iSerial) + "," + std::to_string(iBatch) + "," + ScriptText(sList) + ")";
    // The completion is the acknowledgement: it comes in the order of the
    // batches, also when the script failed or its process died, so the flow
    // cannot come to a halt.
    m_oView->Run(sScript, [this, iBatch, oWeak = std::weak_ptr(m_oSender)](const WebView::Outcome& oOutcome) {
      if (!oOutcome.Error.empty()) Trace("A batch of changes was not carried out: " + oOutcome.Error);
      if (!oOutcome.Result.empty()) Trace("Some changes were not made: " + oOutcome.Result);
      if (const auto oSender = oWeak.lock()) oSender->Acknowledge(iBatch);
    });
  };
  DropDocument();
  m_oSender = std::make_shared<ChangeSender>(Send);
  m_oDocument = oDocument;
  m_oDocument->ReportTo(m_oSender.get());
  ThemeChanged();
  m_oEvents.DocumentComplete(true);
}

bool DesktopWebBrowser::KeyPress(const Key& oKey) {
  // A document that is being replaced takes no keys.
  if (m_oSender == nullptr || oKey.Code == 0) return false;
  const bool bEnter = oKey.Code == KeyCode::Enter || oKey.Code == KeyCode::Space;
  const bool bPages = (m_bPageTakesEscape && oKey.Code == KeyCode::Escape) || (m_bPageTakesEnter && bEnter);
  if (bPages && !oKey.Modified) return false;
  const std::shared_ptr<ZELWbr3::Document> oDocument = m_oDocument;
  const wxWeakRef<wxPanel> oBox = m_oBox;

  bool bSwallow = false;
  m_oPlatform.Pump().Deliver([&] {
    WindowEvent oEvent{oKey.Code};
    const CurrentEvent oCurrent(oDocument->parentWindow(), oEvent);
    bSwallow = m_oEvents.KeyDown() || !oEvent.returnValue;
  });
  if (bSwallow || oBox == nullptr || m_oDocument != oDocument) return bSwallow;

  // Enter and Space click what is active. The browser would do so for links
  // and buttons only, and does not know an active cell at all.
  if (oKey.Modified || !ClicksActiveElement(*oDocument, oKey.Code)) return false;
  // Not within the key's own handling: the click may open a dialog.
  m_oBox->CallAfter([this, oDocument] {
    if (m_oDocument == oDocument && m_oSender != nullptr) m_oPlatform.Pump().Deliver([this] { m_oEvents.Click(); });
  });
  return true;
}

void DesktopWebBrowser::ProcessTerminated(const std::string& sReason) {
  DropDocument();
  m_oDocument.reset();
  m_oPlatform.Pump().Deliver([&] { m_oEvents.ProcessTerminated(sReason); });
}

void DesktopWebBrowser::Trace(const std::string& sText) { m_oPlatform.Trace(sText); }

void DesktopWebBrowser::AfterPaint(std::function<void()> oDone) {
  if (m_oView == nullptr || m_oBox == nullptr || !m_oBox->IsShownOnScreen()) return oDone();
  m_oView->AfterPaint(std::move(oDone));
}

void DesktopWebBrowser::LiveDocument(std::function<void(const std::string&)> oDone) {
  if (m_oView == nullptr) return oDone("");
  m_oView->Run("zelwbr3.Live()", [oDone = std::move(oDone)](const WebView::Outcome& o) { oDone(o.Result); });
}

}  // namespace ZELWbr3::Desktop
