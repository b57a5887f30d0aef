#include "zelwbr3/headless/HeadlessWebBrowser.h"

#include "zelwbr3/framework/KeyClick.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <algorithm>
#include <stdexcept>

namespace ZELWbr3::Headless {

namespace {

/// The path of a page file's URL, where a backslash also separates folders.
std::string PathOf(std::string sURL) {
  std::ranges::replace(sURL, '\\', '/');
  return sURL;
}

}  // namespace

void HeadlessWebBrowser::Navigate(const std::string& sURL, NavigateFlags) {
  m_sURL = sURL;
  m_oNavigation = std::make_shared<const bool>(true);
  Post([this] { m_oEvents.BeforeNavigate(true); });
  Post([this] { m_oEvents.NavigateComplete(); });
  Post([this] {
    m_oDocument = m_sURL == "about:blank" ? ParseHTML("<!DOCTYPE html>") : LoadPageFile(PathOf(m_sURL));
    m_bFound = m_oDocument != nullptr;
    if (!m_bFound) m_oDocument = PageNotFound(PathOf(m_sURL));
    m_oEvents.DocumentComplete(true);
  });
}

void HeadlessWebBrowser::Post(std::function<void()> oNotification) {
  m_oQueue.Post([oNavigation = std::weak_ptr(m_oNavigation), oNotification = std::move(oNotification)] {
    if (!oNavigation.expired()) oNotification();
  });
}

std::string HeadlessWebBrowser::Folder() const {
  const std::string sPath = PathOf(m_sURL);
  const auto iSlash = sPath.rfind('/');
  return iSlash == std::string::npos ? std::string() : sPath.substr(0, iSlash);
}

void HeadlessWebBrowser::Move(int, int, int iWidth, int iHeight) {
  m_iWidth = iWidth;
  m_iHeight = iHeight;
}

void HeadlessWebBrowser::Click(const std::string& sID) {
  Focus(sID);
  m_oEvents.Click();
}

bool HeadlessWebBrowser::Key(Long lKeyCode) {
  if (m_oDocument == nullptr) return false;
  const auto oDocument = m_oDocument;
  const std::weak_ptr oNavigation = m_oNavigation;
  WindowEvent oEvent{lKeyCode};
  {
    const CurrentEvent oCurrent(oDocument->parentWindow(), oEvent);
    if (m_oEvents.KeyDown()) return true;
  }
  if (oNavigation.expired()) return false;  // the handler left the document or destroyed the control
  if (ClicksActiveElement(*oDocument, lKeyCode)) m_oEvents.Click();
  return false;
}

void HeadlessWebBrowser::Focus(const std::string& sID) {
  Element& oElement = Find(sID);
  m_oDocument->Activate(&oElement);
}

void HeadlessWebBrowser::Crash(const std::string& sReason) {
  m_oNavigation.reset();
  m_oDocument.reset();
  m_oEvents.ProcessTerminated(sReason);
}

Element& HeadlessWebBrowser::Find(const std::string& sID) const {
  Element* oElement = m_oDocument == nullptr ? nullptr : m_oDocument->all().item(sID);
  if (oElement == nullptr) throw std::invalid_argument("The document has no element \"" + sID + "\"");
  return *oElement;
}

}  // namespace ZELWbr3::Headless
