#include "zelwbr3/web/WebMessageWindow.h"

#include "zelwbr3/remote/FileURL.h"
#include "zelwbr3/web/WebPlatform.h"

namespace ZELWbr3::Web {

WebMessageWindow::WebMessageWindow(WebPlatform& oPlatform, MessageWindowEvents& oEvents)
    : m_oPlatform(oPlatform), m_oBrowser(oPlatform, Frame, oEvents) {
  m_oPlatform.m_oMessageWindow = this;
  m_oPlatform.Send("window", 1U);
  m_oBrowser.Visible(true);
}

WebMessageWindow::~WebMessageWindow() {
  m_oPlatform.m_oMessageWindow = nullptr;
  m_oPlatform.Send("window", 0U);
}

std::string WebMessageWindow::TopicURL(const std::string& sHelpID) const {
  return HelpFolder + Remote::EscapePath(sHelpID) + ".htm";
}

void WebMessageWindow::ShowModal() {
  while (!m_bClosed) m_oPlatform.MessagePump().Turn();
}

void WebMessageWindow::ShowAgain() {
  m_oPlatform.Send("window", 1U);
  m_oBrowser.ShowAgain();
}

}  // namespace ZELWbr3::Web
