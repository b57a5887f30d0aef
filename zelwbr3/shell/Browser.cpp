#include "zelwbr3/shell/Browser.h"

#include "zelwbr3/shell/BrowserControl.h"
#include "zelwbr3/shell/Pages.h"

#include <stdexcept>
#include <utility>

// Each member looks first whether it is called on the right thread.

namespace ZELWbr3 {

namespace {

std::shared_ptr<void> s_oResource;

/// The control, for a call of this member on its own thread.
BrowserControl& For(const char* sMember, const std::unique_ptr<BrowserControl>& oControl) {
  oControl->CheckThread(sMember);
  return *oControl;
}

}  // namespace

Browser::Browser(ZELWbr3::Platform& oPlatform) : m_oControl(std::make_unique<BrowserControl>(*this, oPlatform)) {}
Browser::~Browser() = default;

const std::string& Browser::CHMPath() const { return For("CHMPath", m_oControl).CHMPath; }
void Browser::CHMPath(const std::string& sPath) { For("CHMPath", m_oControl).CHMPath = sPath; }

const std::string& Browser::HTMLPath() const { return HTMLPaths().front(); }
void Browser::HTMLPath(const std::string& sPath) { HTMLPaths({sPath}); }
const std::vector<std::string>& Browser::HTMLPaths() const { return For("HTMLPath", m_oControl).HTMLPaths; }
void Browser::HTMLPaths(std::vector<std::string> paths) {
  if (paths.empty()) throw std::invalid_argument("Browser::HTMLPaths needs a folder of page files at least");
  For("HTMLPath", m_oControl).HTMLPaths = std::move(paths);
}

Long Browser::PreferredUnit() const { return For("PreferredUnit", m_oControl).lPreferredUnit; }
void Browser::PreferredUnit(Long lUnit) { For("PreferredUnit", m_oControl).lPreferredUnit = lUnit; }

std::shared_ptr<void> Browser::Resource() { return s_oResource; }
void Browser::Resource(std::shared_ptr<void> oResource) { s_oResource = std::move(oResource); }

const std::string& Browser::LocaleDecimalSymbole() const { return m_oControl->LocaleDecimalSymbole(); }
Long Browser::LocaleDecimalPlaces() const { return m_oControl->LocaleDecimalPlaces(); }
const std::string& Browser::LocaleThousendGroupingSymbole() const {
  return m_oControl->LocaleThousendGroupingSymbole();
}

std::shared_ptr<ZELCmd3::FCommandlist> Browser::Commandlist() const {
  return For("Commandlist", m_oControl).Commandlist();
}
void Browser::Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist) {
  For("Commandlist", m_oControl).Commandlist(std::move(oCommandlist));
}

Long Browser::ActPage() const { return For("ActPage", m_oControl).ActPage(); }
std::shared_ptr<Page> Browser::ActPageObj() const { return For("ActPageObj", m_oControl).ActPageObj(); }

std::shared_ptr<ZELWbr3::PageDefault> Browser::PageDefault() {
  return For("PageDefault", m_oControl).Registered<ZELWbr3::PageDefault>();
}
std::shared_ptr<ZELWbr3::PageMain> Browser::PageMain() {
  return For("PageMain", m_oControl).Registered<ZELWbr3::PageMain>();
}
std::shared_ptr<ZELWbr3::PageHistory> Browser::PageHistory() {
  return For("PageHistory", m_oControl).Registered<ZELWbr3::PageHistory>();
}
std::shared_ptr<ZELWbr3::PageHistoryItem> Browser::PageHistoryItem() {
  return For("PageHistoryItem", m_oControl).Registered<ZELWbr3::PageHistoryItem>();
}
std::shared_ptr<ZELWbr3::PageSysInfos> Browser::PageSysInfos() {
  return For("PageSysInfos", m_oControl).Registered<ZELWbr3::PageSysInfos>();
}
std::shared_ptr<ZELWbr3::PageSysInfo> Browser::PageSysInfo() {
  return For("PageSysInfo", m_oControl).Registered<ZELWbr3::PageSysInfo>();
}
std::shared_ptr<ZELWbr3::PageParameters> Browser::PageParameters() {
  return For("PageParameters", m_oControl).Registered<ZELWbr3::PageParameters>();
}
std::shared_ptr<ZELWbr3::PageParameter> Browser::PageParameter() {
  return For("PageParameter", m_oControl).Registered<ZELWbr3::PageParameter>();
}
std::shared_ptr<ZELWbr3::PageInfoCaches> Browser::PageInfoCaches() {
  return For("PageInfoCaches", m_oControl).Registered<ZELWbr3::PageInfoCaches>();
}
std::shared_ptr<ZELWbr3::PageInfoActivity> Browser::PageInfoActivity() {
  return For("PageInfoActivity", m_oControl).Registered<ZELWbr3::PageInfoActivity>();
}
std::shared_ptr<ZELWbr3::PageDataArea> Browser::PageDataArea() {
  return For("PageDataArea", m_oControl).Registered<ZELWbr3::PageDataArea>();
}
std::shared_ptr<ZELWbr3::PageLogArea> Browser::PageLogArea() {
  return For("PageLogArea", m_oControl).Registered<ZELWbr3::PageLogArea>();
}
std::shared_ptr<ZELWbr3::PageSysDD> Browser::PageSysDD() {
  return For("PageSysDD", m_oControl).Registered<ZELWbr3::PageSysDD>();
}
std::shared_ptr<ZELWbr3::PageSQLTable> Browser::PageSQLTable() {
  return For("PageSQLTable", m_oControl).Registered<ZELWbr3::PageSQLTable>();
}
std::shared_ptr<ZELWbr3::PageSessions> Browser::PageSessions() {
  return For("PageSessions", m_oControl).Registered<ZELWbr3::PageSessions>();
}
std::shared_ptr<ZELWbr3::PageDBAnalyzer> Browser::PageDBAnalyzer() {
  return For("PageDBAnalyzer", m_oControl).Registered<ZELWbr3::PageDBAnalyzer>();
}

void Browser::CleanUp() { For("CleanUp", m_oControl).CleanUp(); }
Long Browser::Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser) {
  return For("Show", m_oControl).Show(oPage, lWebBrowser);
}
void Browser::ShowOnTop(Long lWebBrowser) { For("ShowOnTop", m_oControl).ShowOnTop(lWebBrowser); }
void Browser::Navigate(const std::string& sURL, Long lWebBrowser) {
  For("Navigate", m_oControl).Navigate(sURL, lWebBrowser);
}
void Browser::Refresh(Long lWebBrowser) { For("Refresh", m_oControl).Refresh(lWebBrowser); }
void Browser::Clear(Long lWebBrowser) { For("Clear", m_oControl).Clear(lWebBrowser); }
void Browser::ShowMessageHelpID(const std::string& sHelpID) {
  For("ShowMessageHelpID", m_oControl).ShowMessageHelpID(sHelpID);
}
void Browser::Resize(int iWidth, int iHeight) { For("Resize", m_oControl).Resize(iWidth, iHeight); }
std::shared_ptr<ZELWbr3::Document> Browser::VisibleDocument() const {
  return For("VisibleDocument", m_oControl).VisibleDocument();
}
void Browser::Post(std::function<void()> oWork) { m_oControl->Post(std::move(oWork)); }

}  // namespace ZELWbr3
