#include "zelwbr3/shell/Browser.h"

#include "zelwbr3/framework/TabbedPage.h"
#include "zelwbr3/framework/WaitRunnerScope.h"
#include "zelwbr3/framework/modLocal.h"
#include "zelwbr3/shell/Pages.h"
#include "zelwbr3/shell/frmMessage.h"

#include <functional>
#include <map>
#include <stdexcept>

namespace ZELWbr3 {

std::shared_ptr<void> Browser::s_oResource;

Browser::Browser(ZELWbr3::Platform& oPlatform) : m_oPlatform(oPlatform) {
  const UserLocale& oLocale = oPlatform.UserLocale();
  const Long lLCID = oLocale.UserDefaultLCID();
  m_sDecimalSymbole = modLocal::LocaleString(oLocale, lLCID, int{UserLocale::DecimalSeparator});
  m_sThousendGroupingSymbole = modLocal::LocaleString(oLocale, lLCID, int{UserLocale::ThousandsSeparator});
  m_lDecimalPlaces = modLocal::LocaleNumber(oLocale, lLCID, int{UserLocale::DecimalPlaces});

  BrowserFrame::Owner& oOwner = *this;
  for (int iFrame = 0; iFrame < static_cast<int>(m_frames.size()); ++iFrame) {
    m_frames[iFrame] = std::make_shared<BrowserFrame>(iFrame, oOwner);
    m_frames[iFrame]->Attach(oPlatform);
  }
}

Browser::~Browser() {
  m_oAlive.reset();
  for (const auto& oWeak : m_adopted) {
    if (const auto oPage = oWeak.lock()) oPage->CleanUp();
  }
  for (const auto& oFrame : m_frames) oFrame->Detach();
}

void Browser::AdoptPage(const std::shared_ptr<Page>& oPage) {
  std::erase_if(m_adopted, [&](const auto& oWeak) { return oWeak.expired() || oWeak.lock() == oPage; });
  m_adopted.push_back(oPage);
  Adopt(*oPage);
}

std::shared_ptr<Page> Browser::ActPageObj() const {
  return m_lActPage >= 0 && m_lActPage < static_cast<int>(m_registry.size()) ? m_registry[m_lActPage] : nullptr;
}

template <typename PageClass>
std::shared_ptr<PageClass> Browser::Registered() {
  auto& oSlot = m_registry[PageClass::Type];
  if (oSlot == nullptr) {
    oSlot = std::make_shared<PageClass>();
    AdoptPage(oSlot);
  }
  return std::static_pointer_cast<PageClass>(oSlot);
}

std::shared_ptr<ZELWbr3::PageDefault> Browser::PageDefault() { return Registered<ZELWbr3::PageDefault>(); }
std::shared_ptr<ZELWbr3::PageMain> Browser::PageMain() { return Registered<ZELWbr3::PageMain>(); }
std::shared_ptr<ZELWbr3::PageHistory> Browser::PageHistory() { return Registered<ZELWbr3::PageHistory>(); }
std::shared_ptr<ZELWbr3::PageHistoryItem> Browser::PageHistoryItem() { return Registered<ZELWbr3::PageHistoryItem>(); }
std::shared_ptr<ZELWbr3::PageSysInfos> Browser::PageSysInfos() { return Registered<ZELWbr3::PageSysInfos>(); }
std::shared_ptr<ZELWbr3::PageSysInfo> Browser::PageSysInfo() { return Registered<ZELWbr3::PageSysInfo>(); }
std::shared_ptr<ZELWbr3::PageParameters> Browser::PageParameters() { return Registered<ZELWbr3::PageParameters>(); }
std::shared_ptr<ZELWbr3::PageParameter> Browser::PageParameter() { return Registered<ZELWbr3::PageParameter>(); }
std::shared_ptr<ZELWbr3::PageInfoCaches> Browser::PageInfoCaches() { return Registered<ZELWbr3::PageInfoCaches>(); }
std::shared_ptr<ZELWbr3::PageInfoActivity> Browser::PageInfoActivity() {
  return Registered<ZELWbr3::PageInfoActivity>();
}
std::shared_ptr<ZELWbr3::PageDataArea> Browser::PageDataArea() { return Registered<ZELWbr3::PageDataArea>(); }
std::shared_ptr<ZELWbr3::PageLogArea> Browser::PageLogArea() { return Registered<ZELWbr3::PageLogArea>(); }
std::shared_ptr<ZELWbr3::PageSysDD> Browser::PageSysDD() { return Registered<ZELWbr3::PageSysDD>(); }
std::shared_ptr<ZELWbr3::PageSQLTable> Browser::PageSQLTable() { return Registered<ZELWbr3::PageSQLTable>(); }
std::shared_ptr<ZELWbr3::PageSessions> Browser::PageSessions() { return Registered<ZELWbr3::PageSessions>(); }
std::shared_ptr<ZELWbr3::PageDBAnalyzer> Browser::PageDBAnalyzer() { return Registered<ZELWbr3::PageDBAnalyzer>(); }

BrowserFrame& Browser::Frame(Long lWebBrowser) const {
  if (lWebBrowser < 0 || lWebBrowser >= static_cast<int>(m_frames.size())) {
    throw std::out_of_range("Subscript out of range: there is no frame " + std::to_string(lWebBrowser));
  }
  return *m_frames[lWebBrowser];
}

void Browser::CleanUp() {
  for (const int iFrame : {zelWebBrowserMain, zelWebBrowserWork, zelWebBrowserDetail}) Clear(iFrame);
  for (const auto& oPage : m_registry) {
    if (oPage != nullptr) oPage->CleanUp();
  }
  m_registry.fill(nullptr);
}

Long Browser::Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (oPage == nullptr) throw std::invalid_argument("There is no page to show");
  // 1. Hide the previous page, unless it is the same.
  if (oFrame.Page != nullptr && oFrame.Page->Name() != oPage->Name()) oFrame.Page->Hide();
  // 2. and 3. Set the frame's page and URL.
  AdoptPage(oPage);
  oFrame.Page = oPage;
  oFrame.URL = m_sHTMLPath + "\\" + oPage->Name() + ".htm";
  // 4. to 6. Navigate and wait for the document.
  m_bNavigateComplete = false;
  m_bPageComplete = false;
  oFrame.WebBrowser().Navigate(oFrame.URL, NavigateFlags::Fresh);
  WaitUntil([this] { return m_bNavigateComplete; });
  // 7. Bring it to the front.
  BringToFront(lWebBrowser);
  // 8. Wait until the page has filled it and the browser has confirmed that.
  WaitUntil([&] {
    // If the page was removed from the frame, this wait ends, unless another page
    // was shown instead.
    if (!m_bPageComplete && oFrame.Page == nullptr) {
      throw WaitError("The frame was emptied before the page " + oPage->Name() + " was complete");
    }
    return m_bPageComplete;
  });
  WaitUntil([&oFrame] { return oFrame.WebBrowser().Settled(); });
  // 9. Document events go to the frame in front, which may be another one by now.
  return lWebBrowser;
}

void Browser::ShowOnTop(Long lWebBrowser) {
  BringToFront(lWebBrowser);
  if (const auto oPage = Frame(lWebBrowser).Page) NotifyPageComplete(oPage);
}

void Browser::Navigate(const std::string& sURL, Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (sURL.empty()) return;
  if (const auto oPage = std::exchange(oFrame.Page, nullptr)) oPage->Hide();
  if (m_lCurrentFrame == lWebBrowser) ShowCommandsOf(nullptr);
  oFrame.URL = sURL;
  oFrame.WebBrowser().Navigate(sURL, NavigateFlags::None);
}

void Browser::Refresh(Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (!oFrame.URL.empty()) oFrame.WebBrowser().Refresh(oFrame.URL);
}

void Browser::Clear(Long lWebBrowser) { Navigate("about:blank", lWebBrowser); }

void Browser::ShowMessageHelpID(const std::string& sHelpID) {
  frmMessage oMessage(m_oPlatform);
  oMessage.HTMLPath(m_sHTMLPath);
  oMessage.CHMPath(m_sCHMPath);
  oMessage.ShowMessageHelpID(sHelpID);
}

std::function<void()> Browser::MessageHelp(const std::string& sHelpID) {
  if (m_sCHMPath.empty() || !m_oPlatform.HelpFile().HasTopic(m_sCHMPath, sHelpID)) return {};
  return [this, oAlive = std::weak_ptr(m_oAlive), sHelpID] {
    if (!oAlive.expired()) ShowMessageHelpID(sHelpID);
  };
}

void Browser::BringToFront(Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (m_lCurrentFrame != lWebBrowser) {
    if (m_lCurrentFrame >= 0) Frame(m_lCurrentFrame).WebBrowser().Visible(false);
    oFrame.WebBrowser().Visible(true);
    m_lCurrentFrame = lWebBrowser;
  }
  ShowCommandsOf(oFrame.Page);
}

void Browser::ShowCommandsOf(const std::shared_ptr<Page>& oPage) {
  if (const auto oCommandlist = oPage == nullptr ? nullptr : oPage->Commandlist()) m_oCommandlist = oCommandlist;
  if (const auto oCommandlist = m_oCommandlist.lock()) {
    oCommandlist->BringToFront(oPage == nullptr ? Long(int{zelWebBrowserPageNone}) : oPage->PageType());
  }
}

void Browser::NotifyPageComplete(const std::shared_ptr<Page>& oPage) {
  m_lActPage = oPage->PageType();
  m_bPageComplete = true;
  const WaitRunnerScope::Pause oPause;
  PageComplete.Raise(oPage);
}

void Browser::ShowDefault() { PageDefault()->Show(); }

void Browser::ShowPage(const std::string& sName, std::shared_ptr<ZELLib3::Database> oDatabase, Long lTab) {
  using Getter = std::shared_ptr<DataPage> (*)(Browser&);
  static const std::map<std::string, Getter, std::less<>> pages = {
      {"Main", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageMain(); }},
      {"DataArea", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageDataArea(); }},
      {"LogArea", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageLogArea(); }},
      {"Parameters", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageParameters(); }},
      {"InfoCaches", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageInfoCaches(); }},
      {"InfoActivity", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageInfoActivity(); }},
      {"Sessions", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageSessions(); }},
      {"SysInfos", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageSysInfos(); }},
      {"SysDD", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageSysDD(); }},
      {"DBAnalyzer", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageDBAnalyzer(); }},
      {"History", [](Browser& o) -> std::shared_ptr<DataPage> { return o.PageHistory(); }},
  };
  const auto it = pages.find(sName);
  if (it == pages.end()) return;
  const auto oPage = it->second(*this);
  if (const auto oTabbed = std::dynamic_pointer_cast<TabbedPage>(oPage)) oTabbed->ChooseTab(lTab);
  oPage->Show(std::move(oDatabase));
}

void Browser::ShowParameter(std::shared_ptr<ZELLib3::Database> oDatabase,
                            std::shared_ptr<ZELLib3::Parameter> oParameter) {
  PageParameter()->Show(std::move(oDatabase), std::move(oParameter));
}

void Browser::ShowSysInfo(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::SysInfo> oSysInfo) {
  PageSysInfo()->Show(std::move(oDatabase), std::move(oSysInfo));
}

void Browser::ShowSQLTable(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::SQLTable> oSQLTable) {
  PageSQLTable()->Show(std::move(oDatabase), std::move(oSQLTable));
}

void Browser::ShowHistoryItem(std::shared_ptr<ZELLib3::Database> oDatabase,
                              std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) {
  PageHistoryItem()->Show(std::move(oDatabase), std::move(oHistoryItem));
}

void Browser::Resize(int iWidth, int iHeight) {
  for (const auto& oFrame : m_frames) oFrame->WebBrowser().Move(0, 0, iWidth, iHeight);
}

std::shared_ptr<ZELWbr3::Document> Browser::VisibleDocument() const {
  return m_lCurrentFrame < 0 ? nullptr : Frame(m_lCurrentFrame).WebBrowser().Document();
}

void Browser::FlushDocuments() {
  for (const auto& oFrame : m_frames) oFrame->WebBrowser().Flush();
}

void Browser::ProcessTerminated(const std::string& sReason) {
  ++m_iTerminations;
  m_sTermination = sReason;
}

void Browser::WaitUntil(const std::function<bool()>& oDone) {
  const std::weak_ptr<const bool> oAlive = m_oAlive;
  MessagePump& oPump = m_oPlatform.MessagePump();
  const WaitRunnerScope::Pause oPause;
  const int iTerminations = m_iTerminations;
  while (!oDone()) {
    FlushDocuments();
    oPump.Turn();
    if (oAlive.expired()) throw WaitError("The control was destroyed while it waited");
    if (m_iTerminations != iTerminations) throw WaitError("The browser's process ended: " + m_sTermination);
  }
}

}  // namespace ZELWbr3
