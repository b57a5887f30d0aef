#include "zelwbr3/shell/BrowserControl.h"

#include "zelwbr3/framework/TabbedPage.h"
#include "zelwbr3/framework/WaitRunnerScope.h"
#include "zelwbr3/framework/modLocal.h"
#include "zelwbr3/pages/charts/PageCharts.h"
#include "zelwbr3/platform/FCommandlist.h"
#include "zelwbr3/platform/HelpFile.h"
#include "zelwbr3/platform/MessagePump.h"
#include "zelwbr3/platform/UserLocale.h"
#include "zelwbr3/platform/WebBrowser.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/shell/Pages.h"
#include "zelwbr3/shell/frmMessage.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <stdexcept>

namespace ZELWbr3 {

BrowserControl::BrowserControl(Browser& oBrowser, ZELWbr3::Platform& oPlatform)
    : m_oBrowser(oBrowser), m_oPlatform(oPlatform) {
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

BrowserControl::~BrowserControl() {
  m_oAlive.reset();
  for (const auto& oWeak : m_adopted) {
    if (const auto oPage = oWeak.lock()) oPage->CleanUp();
  }
  for (const auto& oFrame : m_frames) oFrame->Detach();
}

void BrowserControl::AdoptPage(const std::shared_ptr<Page>& oPage) {
  std::erase_if(m_adopted, [&](const auto& oWeak) { return oWeak.expired() || oWeak.lock() == oPage; });
  m_adopted.push_back(oPage);
  Adopt(*oPage);
}

void BrowserControl::CheckThread(const char* sMember) const {
  if (std::this_thread::get_id() == m_oThread) return;
  throw std::logic_error(std::string("Browser::") + sMember +
                         " was called on another thread than the one that made the control; Browser::Post takes work "
                         "for that thread");
}

void BrowserControl::Post(std::function<void()> oWork) {
  m_oPlatform.Post([oAlive = std::weak_ptr(m_oAlive), oWork = std::move(oWork)] {
    if (!oAlive.expired()) oWork();
  });
}

const std::string& BrowserControl::FolderOf(const std::string& sPageFile) const {
  const auto Has = [&](const std::string& sFolder) {
    std::error_code oIgnored;
    return std::filesystem::exists(std::filesystem::path(sFolder) / sPageFile, oIgnored);
  };
  const auto it = HTMLPaths.size() == 1 ? HTMLPaths.begin() : std::ranges::find_if(HTMLPaths, Has);
  return it == HTMLPaths.end() ? HTMLPaths.front() : *it;
}

bool BrowserControl::IsBehind(Long lWebBrowser) const { return Frame(lWebBrowser).WebBrowser().IsBehind(); }
void BrowserControl::RaiseActionBegin() { m_oBrowser.ActionBegin.Raise(); }
void BrowserControl::RaiseActionComplete(bool bRefresh) { m_oBrowser.ActionComplete.Raise(bRefresh); }
void BrowserControl::RaiseCommand(Long lCommand) { m_oBrowser.Command.Raise(lCommand); }

std::shared_ptr<Page> BrowserControl::ActPageObj() const {
  return m_lActPage >= 0 && m_lActPage < static_cast<int>(m_registry.size()) ? m_registry[m_lActPage] : nullptr;
}

BrowserFrame& BrowserControl::Frame(Long lWebBrowser) const {
  if (lWebBrowser < 0 || lWebBrowser >= static_cast<int>(m_frames.size())) {
    throw std::out_of_range("Subscript out of range: there is no frame " + std::to_string(lWebBrowser));
  }
  return *m_frames[lWebBrowser];
}

void BrowserControl::Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist) {
  m_oPagesCommandlist = std::move(oCommandlist);
  for (const auto& oPage : m_registry) {
    if (oPage != nullptr) GiveCommandlist(*oPage);
  }
}

void BrowserControl::GiveCommandlist(Page& oPage) const {
  auto* oDataPage = dynamic_cast<DataPage*>(&oPage);
  if (oDataPage != nullptr && m_oPagesCommandlist != nullptr) oDataPage->Commandlist(m_oPagesCommandlist);
}

void BrowserControl::CleanUp() {
  for (const int iFrame : {zelWebBrowserMain, zelWebBrowserWork, zelWebBrowserDetail}) Clear(iFrame);
  for (const auto& oPage : m_registry) {
    if (oPage != nullptr) oPage->CleanUp();
  }
  m_registry.fill(nullptr);
  if (const auto oCharts = std::exchange(m_oCharts, nullptr)) oCharts->CleanUp();
}

Long BrowserControl::Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (oPage == nullptr) throw std::invalid_argument("There is no page to show");
  // 1. Hide the previous page, unless it is the same.
  if (oFrame.Page != nullptr && oFrame.Page->Name() != oPage->Name()) oFrame.Page->Hide();
  // 2. and 3. Set the frame's page and URL.
  AdoptPage(oPage);
  oFrame.Page = oPage;
  const std::string sPageFile = oPage->Name() + ".htm";
  oFrame.URL = FolderOf(sPageFile) + "\\" + sPageFile;
  // 4. to 6. Navigate and wait for the document.
  m_bNavigateComplete = false;
  m_bPageComplete = false;
  oFrame.WebBrowser().PageFolders(HTMLPaths);
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

void BrowserControl::ShowOnTop(Long lWebBrowser) {
  BringToFront(lWebBrowser);
  if (const auto oPage = Frame(lWebBrowser).Page) NotifyPageComplete(oPage);
}

void BrowserControl::Navigate(const std::string& sURL, Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (sURL.empty()) return;
  if (const auto oPage = std::exchange(oFrame.Page, nullptr)) oPage->Hide();
  if (m_lCurrentFrame == lWebBrowser) ShowCommandsOf(nullptr);
  oFrame.URL = sURL;
  oFrame.WebBrowser().Navigate(sURL, NavigateFlags::None);
}

void BrowserControl::Refresh(Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (!oFrame.URL.empty()) oFrame.WebBrowser().Refresh(oFrame.URL);
}

void BrowserControl::Clear(Long lWebBrowser) { Navigate("about:blank", lWebBrowser); }

void BrowserControl::ShowMessageHelpID(const std::string& sHelpID) {
  frmMessage oMessage(m_oPlatform);
  oMessage.HTMLPath(FolderOf("Message.htm"));
  oMessage.CHMPath(CHMPath);
  oMessage.ShowMessageHelpID(sHelpID);
}

std::function<void()> BrowserControl::MessageHelp(const std::string& sHelpID) {
  if (CHMPath.empty() || !m_oPlatform.HelpFile().HasTopic(CHMPath, sHelpID)) return {};
  return [this, oAlive = std::weak_ptr(m_oAlive), sHelpID] {
    if (!oAlive.expired()) ShowMessageHelpID(sHelpID);
  };
}

void BrowserControl::BringToFront(Long lWebBrowser) {
  BrowserFrame& oFrame = Frame(lWebBrowser);
  if (m_lCurrentFrame != lWebBrowser) {
    if (m_lCurrentFrame >= 0) Frame(m_lCurrentFrame).WebBrowser().Visible(false);
    oFrame.WebBrowser().Visible(true);
    m_lCurrentFrame = lWebBrowser;
  }
  ShowCommandsOf(oFrame.Page);
}

void BrowserControl::ShowCommandsOf(const std::shared_ptr<Page>& oPage) {
  if (const auto oCommandlist = oPage == nullptr ? nullptr : oPage->Commandlist()) m_oCommandlist = oCommandlist;
  if (const auto oCommandlist = m_oCommandlist.lock()) {
    oCommandlist->BringToFront(oPage == nullptr ? Long(int{zelWebBrowserPageNone}) : oPage->PageType());
  }
}

void BrowserControl::NotifyPageComplete(const std::shared_ptr<Page>& oPage) {
  m_lActPage = oPage->PageType();
  m_bPageComplete = true;
  const WaitRunnerScope::Pause oPause;
  m_oBrowser.PageComplete.Raise(oPage);
}

void BrowserControl::ShowDefault() { Registered<PageDefault>()->Show(); }

void BrowserControl::ShowPage(const std::string& sName, std::shared_ptr<ZELLib3::Database> oDatabase, Long lTab) {
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
  const auto oPage = it->second(m_oBrowser);
  if (const auto oTabbed = std::dynamic_pointer_cast<TabbedPage>(oPage)) oTabbed->ChooseTab(lTab);
  oPage->Show(std::move(oDatabase));
}

void BrowserControl::ShowCharts(std::shared_ptr<ZELLib3::Database> oDatabase, const std::string& sGroup,
                                const std::string& sFigure) {
  if (m_oCharts == nullptr) {
    m_oCharts = std::make_shared<PageCharts>();
    AdoptPage(m_oCharts);
  }
  const auto oCharts = std::static_pointer_cast<PageCharts>(m_oCharts);
  if (const auto oCommandlist = m_oCommandlist.lock(); oCharts->Commandlist() != oCommandlist) {
    oCharts->Commandlist(oCommandlist);
  }
  oCharts->Show(std::move(oDatabase), sGroup, sFigure);
}

void BrowserControl::ShowParameter(std::shared_ptr<ZELLib3::Database> oDatabase,
                                   std::shared_ptr<ZELLib3::Parameter> oParameter) {
  Registered<PageParameter>()->Show(std::move(oDatabase), std::move(oParameter));
}

void BrowserControl::ShowSysInfo(std::shared_ptr<ZELLib3::Database> oDatabase,
                                 std::shared_ptr<ZELLib3::SysInfo> oSysInfo) {
  Registered<PageSysInfo>()->Show(std::move(oDatabase), std::move(oSysInfo));
}

void BrowserControl::ShowSQLTable(std::shared_ptr<ZELLib3::Database> oDatabase,
                                  std::shared_ptr<ZELLib3::SQLTable> oSQLTable) {
  Registered<PageSQLTable>()->Show(std::move(oDatabase), std::move(oSQLTable));
}

void BrowserControl::ShowHistoryItem(std::shared_ptr<ZELLib3::Database> oDatabase,
                                     std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) {
  Registered<PageHistoryItem>()->Show(std::move(oDatabase), std::move(oHistoryItem));
}

void BrowserControl::Resize(int iWidth, int iHeight) {
  for (const auto& oFrame : m_frames) oFrame->WebBrowser().Move(0, 0, iWidth, iHeight);
}

std::shared_ptr<ZELWbr3::Document> BrowserControl::VisibleDocument() const {
  return m_lCurrentFrame < 0 ? nullptr : Frame(m_lCurrentFrame).WebBrowser().Document();
}

void BrowserControl::FlushDocuments() {
  for (const auto& oFrame : m_frames) oFrame->WebBrowser().Flush();
}

void BrowserControl::ProcessTerminated(const std::string& sReason) {
  ++m_iTerminations;
  m_sTermination = sReason;
}

void BrowserControl::WaitUntil(const std::function<bool()>& oDone) {
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
