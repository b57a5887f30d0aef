#pragma once

#include "zelwbr3/framework/Page.h"
#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/platform/Platform.h"
#include "zelwbr3/shell/BrowserFrame.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace ZELCmd3 {
class FCommandlist;
}

namespace ZELWbr3 {

class Browser;

/// What is inside the control: its frames, the registry of its pages, showing and
/// waiting, and what pages may ask of it. Browser is the door to it for hosts.
class BrowserControl : private PageSite, private BrowserFrame::Owner {
 public:
  BrowserControl(Browser& oBrowser, ZELWbr3::Platform& oPlatform);
  /// Cleans up the pages; a wait in progress ends with an error.
  ~BrowserControl();
  BrowserControl(const BrowserControl&) = delete;
  BrowserControl& operator=(const BrowserControl&) = delete;

  // What the host sets.
  std::string CHMPath;
  /// Searched in this order; one at least.
  std::vector<std::string> HTMLPaths = {""};
  Long lPreferredUnit;

  // What Browser's members of the same names do.
  const std::string& LocaleDecimalSymbole() const override { return m_sDecimalSymbole; }
  Long LocaleDecimalPlaces() const override { return m_lDecimalPlaces; }
  const std::string& LocaleThousendGroupingSymbole() const override { return m_sThousendGroupingSymbole; }
  Long ActPage() const { return m_lActPage; }
  std::shared_ptr<Page> ActPageObj() const;
  const std::shared_ptr<ZELCmd3::FCommandlist>& Commandlist() const { return m_oPagesCommandlist; }
  void Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist);
  void CleanUp();
  Long Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser) override;
  void ShowOnTop(Long lWebBrowser) override;
  void Navigate(const std::string& sURL, Long lWebBrowser);
  void Refresh(Long lWebBrowser) override;
  void Clear(Long lWebBrowser);
  void ShowMessageHelpID(const std::string& sHelpID);
  void Resize(int iWidth, int iHeight);
  std::shared_ptr<ZELWbr3::Document> VisibleDocument() const;
  /// May be called on any thread.
  void Post(std::function<void()> oWork);

  /// The registry's page of that class, created if there is none.
  template <typename PageClass>
  std::shared_ptr<PageClass> Registered() {
    auto& oSlot = m_registry[PageClass::Type];
    if (oSlot == nullptr) {
      oSlot = std::make_shared<PageClass>();
      AdoptPage(oSlot);
      GiveCommandlist(*oSlot);
    }
    return std::static_pointer_cast<PageClass>(oSlot);
  }

  /// Throws std::logic_error, which names the member of Browser that was called,
  /// on any thread but the control's own.
  void CheckThread(const char* sMember) const;

 private:
  Long PreferredUnit() const override { return lPreferredUnit; }
  bool HasPage(Long lWebBrowser) const override { return Frame(lWebBrowser).Page != nullptr; }
  bool IsBehind(Long lWebBrowser) const override;
  void ShowDefault() override;
  void ShowPage(const std::string& sName, std::shared_ptr<ZELLib3::Database> oDatabase, Long lTab) override;
  void ShowCharts(std::shared_ptr<ZELLib3::Database> oDatabase, const std::string& sGroup,
                  const std::string& sFigure) override;
  void ShowParameter(std::shared_ptr<ZELLib3::Database> oDatabase,
                     std::shared_ptr<ZELLib3::Parameter> oParameter) override;
  void ShowSysInfo(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::SysInfo> oSysInfo) override;
  void ShowSQLTable(std::shared_ptr<ZELLib3::Database> oDatabase,
                    std::shared_ptr<ZELLib3::SQLTable> oSQLTable) override;
  void ShowHistoryItem(std::shared_ptr<ZELLib3::Database> oDatabase,
                       std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) override;

  std::function<void()> MessageHelp(const std::string& sHelpID) override;

  void NotifyPageComplete(const std::shared_ptr<Page>& oPage) override;
  void RaiseActionBegin() override;
  void RaiseActionComplete(bool bRefresh) override;
  void RaiseCommand(Long lCommand) override;
  ZELWbr3::Platform& Platform() override { return m_oPlatform; }
  void FlushDocuments() override;

  void NavigateCompleted() override { m_bNavigateComplete = true; }
  bool IsInFront(int iFrame) const override { return m_lCurrentFrame == iFrame; }
  bool DropEvents(bool bDrop) override { return std::exchange(m_bBusy, bDrop); }
  bool EnterDocumentEvent() override { return !DropEvents(true); }
  void LeaveDocumentEvent() override { m_bBusy = false; }
  void ProcessTerminated(const std::string& sReason) override;
  void TraceFailure(const std::string& sWhere, const std::exception& oThrown) override {
    m_oPlatform.TraceFailure(sWhere, oThrown);
  }

  BrowserFrame& Frame(Long lWebBrowser) const;
  void AdoptPage(const std::shared_ptr<Page>& oPage);
  void GiveCommandlist(Page& oPage) const;
  void BringToFront(Long lWebBrowser);
  /// Makes the host's command list show the commands of the page in front; none
  /// if there is no page or it has no commands.
  void ShowCommandsOf(const std::shared_ptr<Page>& oPage);
  void WaitUntil(const std::function<bool()>& oDone);
  /// The first folder that has the page file, or else the first folder.
  const std::string& FolderOf(const std::string& sPageFile) const;

  Browser& m_oBrowser;
  ZELWbr3::Platform& m_oPlatform;
  std::string m_sDecimalSymbole;
  Long m_lDecimalPlaces;
  std::string m_sThousendGroupingSymbole;

  const std::thread::id m_oThread = std::this_thread::get_id();
  std::array<std::shared_ptr<Page>, zelWebBrowserPageDBAnalyzer + 1> m_registry;  // 0 stays empty
  /// Not one of the registry's kinds.
  std::shared_ptr<Page> m_oCharts;
  /// Every page that may still call this control: those of the registry and those
  /// shown by the host.
  std::vector<std::weak_ptr<Page>> m_adopted;
  std::array<std::shared_ptr<BrowserFrame>, 4> m_frames;
  /// Of all pages of the registry; null = each has what the host gave it.
  std::shared_ptr<ZELCmd3::FCommandlist> m_oPagesCommandlist;
  /// That of the page shown last.
  std::weak_ptr<ZELCmd3::FCommandlist> m_oCommandlist;
  Long m_lCurrentFrame = -1;
  Long m_lActPage;
  bool m_bNavigateComplete = false;
  bool m_bPageComplete = false;
  bool m_bBusy = false;

  /// Number of browser processes that have died, and why the last one did.
  int m_iTerminations = 0;
  std::string m_sTermination;
  /// Expires with the control, so that code that pumps messages notices.
  std::shared_ptr<const bool> m_oAlive = std::make_shared<const bool>(true);
};

}  // namespace ZELWbr3
