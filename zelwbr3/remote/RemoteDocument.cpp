#include "zelwbr3/remote/RemoteDocument.h"

#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/framework/KeyClick.h"
#include "zelwbr3/framework/KeyCode.h"
#include "zelwbr3/remote/Snapshot.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Remote {

namespace {

/// A message with a snapshot, without its kind and its document's number.
std::string_view Content(std::string_view sMessage) {
  for (int i = 0; i < 2; ++i) sMessage.remove_prefix(std::min(sMessage.find(',') + 1, sMessage.size()));
  return sMessage;
}

}  // namespace

RemoteDocument::~RemoteDocument() {
  if (m_oDocument != nullptr) m_oDocument->ReportTo(nullptr);
}

void RemoteDocument::Later(std::function<void()> oTask) {
  m_oChannel.Later([this, iSerial = m_iSerial, oAlive = std::weak_ptr(m_oAlive), oTask = std::move(oTask)] {
    if (!oAlive.expired() && m_iSerial == iSerial) oTask();
  });
}

void RemoteDocument::Begin(std::uint32_t iSerial, How eHow, bool bKnown) {
  Drop();
  m_eHow = eHow;
  m_bKnown = bKnown;
  m_iSerial = iSerial;
  m_bAnnounced = false;
  Later([this] { Announce(); });
  if (!bKnown) return;
  Later([this] { m_oEvents.NavigateComplete(); });
  Later([this] { Build(); });
}

void RemoteDocument::BeginKnown(std::uint32_t iSerial, std::string sSnapshot) {
  m_sLoad = std::move(sSnapshot);
  Begin(iSerial, How::Load, true);
}

void RemoteDocument::LoadInstead(std::uint32_t iSerial) {
  m_eHow = How::Load;
  m_iSerial = iSerial;
  // What was put off was meant for the other number.
  Later([this] { Announce(); });
}

void RemoteDocument::Announce() {
  if (m_bAnnounced) return;
  m_bAnnounced = true;
  m_oEvents.BeforeNavigate(true);
}

void RemoteDocument::Drop() {
  if (m_oDocument != nullptr) m_oDocument->ReportTo(nullptr);
  m_oSender.reset();
  m_bPageTakesEscape = false;
  m_bPageTakesEnter = false;
}

void RemoteDocument::Lose() {
  Drop();
  m_oDocument.reset();
  m_iSerial = 0;  // what it still says is of no interest
}

void RemoteDocument::Flush() {
  if (m_oSender != nullptr) m_oSender->Flush();
}

void RemoteDocument::Theme(const std::string& sName) {
  // The attribute is part of the document like any other, so the document shown
  // follows by the same road as every change.
  constexpr const char* Attribute = "data-theme";
  Element* oRoot = m_oDocument == nullptr ? nullptr : m_oDocument->documentElement();
  if (oRoot == nullptr || oRoot->getAttribute(Attribute) == sName) return;
  if (sName.empty()) {
    oRoot->removeAttribute(Attribute);
  } else {
    oRoot->setAttribute(Attribute, sName);
  }
  Flush();
}

void RemoteDocument::Handle(std::string_view sMessage) {
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
  if (m_bKnown && (sKind == "begin" || sKind == "load")) {
    if (sKind == "load" && Content(sMessage) != Content(m_sLoad)) m_oChannel.Unexpected();
  } else if (sKind == "begin") {
    // Nothing more to wait for; but whoever waits for the navigation goes on first.
    if (m_eHow != How::Load) Later([this] { Build(); });
    m_oEvents.NavigateComplete();
  } else if (sKind == "load") {
    m_sLoad = sMessage;
    Build();
  } else if (sKind == "keys") {
    m_bPageTakesEscape = oList.Number() != 0;
    m_bPageTakesEnter = oList.Number() != 0;
  } else if (sKind == "key") {
    KeyPress(oList.Number(), false);
  } else if (sKind == "export") {
    m_oChannel.Export(oList.Text());
  } else if (m_oSender != nullptr) {
    m_oDocument->Activate(m_oDocument->ByNumber(oList.Number()));
    if (sKind == "click") m_oEvents.Click();
  }
}

void RemoteDocument::Build() {
  const auto oDocument = std::make_shared<ZELWbr3::Document>();
  FlatListReader oSnapshot(m_sLoad);
  oSnapshot.Text();    // the kind of the message
  oSnapshot.Number();  // and the document's number then
  BuildDocument(oSnapshot, *oDocument);
  if (m_eHow == How::Load) m_oChannel.Loaded(*oDocument);

  Drop();
  m_oSender =
      std::make_shared<ChangeSender>([this, iSerial = m_iSerial](std::uint32_t iBatch, const std::string& sList) {
        m_oChannel.SendBatch(iSerial, iBatch, sList);
      });
  m_oDocument = oDocument;
  m_oDocument->ReportTo(m_oSender.get());
  m_oChannel.Ready();
  const bool bPresent = m_eHow == How::Refresh;
  const std::weak_ptr oSender = m_oSender;
  m_oEvents.DocumentComplete(true);
  // Nothing else is touched: filling it may have ended this object.
  if (const auto oFilled = oSender.lock(); bPresent && oFilled != nullptr) oFilled->Present();
}

void RemoteDocument::Acknowledge(std::uint32_t iSerial, std::uint32_t iBatch) {
  if (m_oSender != nullptr && iSerial == m_iSerial) m_oSender->Acknowledge(iBatch);
}

bool RemoteDocument::KeyPress(Long lCode, bool bModified) {
  // A document that is being replaced takes no keys.
  if (m_oSender == nullptr || lCode == 0) return false;
  const bool bEnter = lCode == KeyCode::Enter || lCode == KeyCode::Space;
  const bool bEscape = lCode == KeyCode::Escape && !m_oDocument->parentWindow().TakesEscape();
  const bool bPages = (m_bPageTakesEscape && bEscape) || (m_bPageTakesEnter && bEnter);
  if (bPages && !bModified) return false;
  const std::shared_ptr<ZELWbr3::Document> oDocument = m_oDocument;
  const std::weak_ptr oAlive = m_oAlive;

  WindowEvent oEvent{lCode};
  bool bSwallow = false;
  {
    const CurrentEvent oCurrent(oDocument->parentWindow(), oEvent);
    bSwallow = m_oEvents.KeyDown() || !oEvent.returnValue;
  }
  if (bSwallow || oAlive.expired() || m_oDocument != oDocument) return bSwallow;

  // Enter and Space click what is active. The browser would do so for links
  // and buttons only, and does not know an active cell at all.
  if (bModified || !ClicksActiveElement(*oDocument, lCode)) return false;
  // Not within the key's own handling: the click may open a dialog.
  Later([this, oDocument] {
    if (m_oDocument == oDocument && m_oSender != nullptr) m_oEvents.Click();
  });
  return true;
}

}  // namespace ZELWbr3::Remote
