#include "zelwbr3/shell/BrowserFrame.h"

#include "zelwbr3/base/Finally.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/platform/MessagePump.h"

namespace ZELWbr3 {

void BrowserFrame::Attach(Platform& oPlatform) { m_oWebBrowser = oPlatform.MakeWebBrowser(m_iFrame, *this); }

void BrowserFrame::Detach() {
  m_oOwner = nullptr;
  Page.reset();
  m_oWebBrowser.reset();
}

ZELWbr3::WebBrowser& BrowserFrame::WebBrowser() const {
  if (m_oWebBrowser == nullptr) throw WaitError("The control was destroyed");
  return *m_oWebBrowser;
}

void BrowserFrame::BeforeNavigate(bool bTopLevel) {
  if (bTopLevel && Page != nullptr) Page->NoEvents(true);
}

void BrowserFrame::NavigateComplete() {
  if (m_oOwner != nullptr) m_oOwner->NavigateCompleted();
}

void BrowserFrame::DocumentComplete(bool bTopLevel) {
  if (!bTopLevel || Page == nullptr) return;
  const auto oSelf = shared_from_this();
  const auto oPage = Page;
  try {
    if (const auto oDocument = m_oWebBrowser->Document()) oPage->DocumentComplete(oDocument);
  } catch (const std::exception& oError) {
    // The notification comes from the message loop, where nobody could handle an
    // exception.
    if (m_oOwner != nullptr) m_oOwner->TraceFailure(oPage->Name() + ".DocumentComplete", oError);
  }
  oPage->NoEvents(false);
  Flush();
}

void BrowserFrame::Click() {
  HandleDocumentEvent([this](Document& oDocument) {
    const Element* oElement = oDocument.activeElement();
    const auto oPage = Page;  // the handler may remove it from the frame
    if (oElement == nullptr || oPage == nullptr) return;
    const std::string sID = oElement->id();
    if (!sID.empty()) oPage->HandleOnClick(sID);
  });
}

bool BrowserFrame::KeyDown() {
  bool bSwallowed = false;
  HandleDocumentEvent([&](Document& oDocument) {
    WindowEvent* oEvent = oDocument.parentWindow().event();
    Long lKeyCode = oEvent == nullptr ? Long(0) : oEvent->keyCode;
    const auto oPage = Page;
    if (oPage == nullptr || !oPage->HandleOnKeyDown(lKeyCode, oDocument.activeElement())) return;
    // Read again, because the handler may have run a message loop.
    oEvent = oDocument.parentWindow().event();
    if (oEvent != nullptr) {
      oEvent->keyCode = 0;
      oEvent->returnValue = false;
      bSwallowed = true;
    }
  });
  return bSwallowed;
}

void BrowserFrame::HandleDocumentEvent(const std::function<void(Document&)>& oHandler) {
  if (m_oOwner == nullptr || !m_oOwner->IsInFront(m_iFrame)) return;
  const auto oDocument = m_oWebBrowser->Document();
  if (oDocument == nullptr || !m_oOwner->EnterDocumentEvent()) return;

  const auto oSelf = shared_from_this();
  const auto Left = [this] {
    if (m_oOwner != nullptr) m_oOwner->LeaveDocumentEvent();
  };
  try {
    Finally([&] { oHandler(*oDocument); }, Left);
  } catch (const std::exception& oError) {
    if (m_oOwner != nullptr) m_oOwner->TraceFailure("A document event failed", oError);
  }
  Flush();
}

void BrowserFrame::Flush() {
  if (m_oWebBrowser != nullptr) m_oWebBrowser->Flush();
}

void BrowserFrame::ProcessTerminated(const std::string& sReason) {
  if (m_oOwner != nullptr) m_oOwner->ProcessTerminated(sReason);
}

}  // namespace ZELWbr3
