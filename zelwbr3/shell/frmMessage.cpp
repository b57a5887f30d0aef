#include "zelwbr3/shell/frmMessage.h"

#include "zelwbr3/dom/Document.h"

namespace ZELWbr3 {

namespace {

/// Escapes characters that would end the path of a URL or start an escape.
std::string InURL(const std::string& sPath) {
  std::string sEscaped;
  for (const char c : sPath) {
    if (c == '%') {
      sEscaped += "%25";
    } else if (c == '#') {
      sEscaped += "%23";
    } else if (c == '?') {
      sEscaped += "%3F";
    } else {
      sEscaped += c;
    }
  }
  return sEscaped;
}

}  // namespace

void frmMessage::ShowMessageHelpID(const std::string& sHelpID) {
  m_oWindow = m_oPlatform.MakeMessageWindow(*this);
  m_sTopicURL = m_oWindow->TopicURL(sHelpID);
  if (m_sTopicURL.empty()) m_sTopicURL = "mk:@MSITStore:" + InURL(m_sCHMPath) + "::/" + InURL(sHelpID) + ".htm";
  m_oWindow->CHMPath(m_sCHMPath);
  m_oWindow->WebBrowser().Navigate(m_sHTMLPath + "\\Message.htm", NavigateFlags::None);
  m_oWindow->ShowModal();
  m_oWindow.reset();
}

void frmMessage::DocumentComplete(bool bTopLevel) {
  if (!bTopLevel) return;
  WebBrowser& oWebBrowser = m_oWindow->WebBrowser();
  const auto oDocument = oWebBrowser.Document();
  if (oDocument == nullptr || oDocument->body() == nullptr) return;
  if (Element* oFrame = oDocument->body()->all().item("Message1.Txt")) oFrame->setAttribute("src", m_sTopicURL);
  oWebBrowser.Flush();
}

void frmMessage::ProcessTerminated(const std::string& sReason) {
  m_oPlatform.Trace("The message window's browser process ended: " + sReason);
}

void frmMessage::Resize(int iWidth, int iHeight) {
  // The platform may size the window while creating it.
  if (m_oWindow != nullptr) m_oWindow->WebBrowser().Move(0, 0, iWidth, iHeight);
}

}  // namespace ZELWbr3
