#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/shell/BrowserFrame.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3 {

// The headers of the pages are in zelwbr3/shell/Pages.h.
class PageDBAnalyzer;
class PageDataArea;
class PageDefault;
class PageHistory;
class PageHistoryItem;
class PageInfoActivity;
class PageInfoCaches;
class PageLogArea;
class PageMain;
class PageParameter;
class PageParameters;
class PageSQLTable;
class PageSessions;
class PageSysDD;
class PageSysInfo;
class PageSysInfos;

/// The browser control: shows the pages of one instance in four stacked frames,
/// routes clicks and keys to the page in front and reports to the host by events.
///
/// Everything happens on the user-interface thread. Show waits by pumping
/// messages, without a time-out; during that the host may call the control again.
/// A wait that cannot end raises WaitError. Nothing is persisted.
///
///     Browser oBrowser(oPlatform);
///     oBrowser.HTMLPath("/usr/share/zelwbr3/html");
///     oBrowser.PageMain()->Show(oDatabase);
class Browser : private PageSite, private BrowserFrame::Owner {
 public:
  /// The platform must outlive the control.
  explicit Browser(ZELWbr3::Platform& oPlatform);
  /// Cleans up the pages; a wait in progress ends with an error.
  ~Browser();
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;

  using PageSite::zelWebBrowserDetail;
  using PageSite::zelWebBrowserMain;
  using PageSite::zelWebBrowserWork;

  /// Path of the compiled help file.
  const std::string& CHMPath() const { return m_sCHMPath; }
  void CHMPath(const std::string& sPath) { m_sCHMPath = sPath; }
  /// Folder of the page files, without a trailing separator.
  const std::string& HTMLPath() const { return m_sHTMLPath; }
  void HTMLPath(const std::string& sPath) { m_sHTMLPath = sPath; }
  /// The unit to show sizes in: 0 KB, 1 MB, 2 GB, 3 pages, 4 automatic, -1 bytes.
  /// It is the number of a unit of clsSize, minus one.
  Long PreferredUnit() const override { return m_lPreferredUnit; }
  void PreferredUnit(Long lUnit) { m_lPreferredUnit = lUnit; }
  /// An object of the host that all pages of all controls share.
  static std::shared_ptr<void> Resource() { return s_oResource; }
  static void Resource(std::shared_ptr<void> oResource) { s_oResource = std::move(oResource); }
  /// The user's number settings, read when the control was created.
  const std::string& LocaleDecimalSymbole() const override { return m_sDecimalSymbole; }
  Long LocaleDecimalPlaces() const override { return m_lDecimalPlaces; }
  const std::string& LocaleThousendGroupingSymbole() const override { return m_sThousendGroupingSymbole; }
  /// Page type of the page that completed last; initially 0.
  Long ActPage() const { return m_lActPage; }
  /// The page of that type in the registry; null if there is none yet.
  std::shared_ptr<Page> ActPageObj() const;

  // The pages, each created on first use.
  std::shared_ptr<ZELWbr3::PageDefault> PageDefault();
  std::shared_ptr<ZELWbr3::PageMain> PageMain();
  std::shared_ptr<ZELWbr3::PageHistory> PageHistory();
  std::shared_ptr<ZELWbr3::PageHistoryItem> PageHistoryItem();
  std::shared_ptr<ZELWbr3::PageSysInfos> PageSysInfos();
  std::shared_ptr<ZELWbr3::PageSysInfo> PageSysInfo();
  std::shared_ptr<ZELWbr3::PageParameters> PageParameters();
  std::shared_ptr<ZELWbr3::PageParameter> PageParameter();
  std::shared_ptr<ZELWbr3::PageInfoCaches> PageInfoCaches();
  std::shared_ptr<ZELWbr3::PageInfoActivity> PageInfoActivity();
  std::shared_ptr<ZELWbr3::PageDataArea> PageDataArea();
  std::shared_ptr<ZELWbr3::PageLogArea> PageLogArea();
  std::shared_ptr<ZELWbr3::PageSysDD> PageSysDD();
  std::shared_ptr<ZELWbr3::PageSQLTable> PageSQLTable();
  std::shared_ptr<ZELWbr3::PageSessions> PageSessions();
  std::shared_ptr<ZELWbr3::PageDBAnalyzer> PageDBAnalyzer();

  // Frame numbers outside 0 to 3 raise std::out_of_range.

  /// Empties the frames 0 to 2, cleans up all pages and forgets them.
  void CleanUp();
  /// Shows a page in a frame, waits until it has filled its document and the
  /// browser has confirmed that, and returns the frame's number.
  Long Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser) override;
  /// Brings a frame to the front and announces its page, if it has one, as
  /// complete again.
  void ShowOnTop(Long lWebBrowser) override;
  /// Navigates a frame anywhere, http and https included, without a page and
  /// without waiting. An empty URL does nothing.
  void Navigate(const std::string& sURL, Long lWebBrowser);
  /// Loads the frame's URL again, without waiting; the page fills it again. Does
  /// nothing if the frame was never navigated.
  void Refresh(Long lWebBrowser) override;
  /// Takes the frame's page away and empties it.
  void Clear(Long lWebBrowser);
  /// Explains a message with a topic of the help file, in a window of its own;
  /// returns when the user has closed it.
  void ShowMessageHelpID(const std::string& sHelpID);

  /// Gives all frames the size of the control, in the platform's pixels.
  void Resize(int iWidth, int iHeight);

  /// The document of the frame in front; null if there is none.
  std::shared_ptr<ZELWbr3::Document> VisibleDocument() const;

  // Keys that the control itself receives, not a document: the key code and
  // the shift state (1 Shift, 2 Ctrl, 4 Alt), or the character.
  Event<Integer&, Integer&> KeyDown;
  Event<Integer&> KeyPress;
  Event<Integer&, Integer&> KeyUp;
  /// A page has filled its document, or came to the front again.
  Event<const std::shared_ptr<Page>&> PageComplete;
  /// A page begins a long action, and has finished it. True asks the host to
  /// refresh.
  Event<> ActionBegin;
  Event<bool> ActionComplete;
  /// A page asks the host to carry out a command.
  Event<Long> Command;

 private:
  bool HasPage(Long lWebBrowser) const override { return Frame(lWebBrowser).Page != nullptr; }
  bool IsBehind(Long lWebBrowser) const override { return Frame(lWebBrowser).WebBrowser().IsBehind(); }
  void ShowDefault() override;
  void ShowPage(const std::string& sName, std::shared_ptr<ZELLib3::Database> oDatabase, Long lTab) override;
  void ShowParameter(std::shared_ptr<ZELLib3::Database> oDatabase,
                     std::shared_ptr<ZELLib3::Parameter> oParameter) override;
  void ShowSysInfo(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::SysInfo> oSysInfo) override;
  void ShowSQLTable(std::shared_ptr<ZELLib3::Database> oDatabase,
                    std::shared_ptr<ZELLib3::SQLTable> oSQLTable) override;
  void ShowHistoryItem(std::shared_ptr<ZELLib3::Database> oDatabase,
                       std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) override;

  std::function<void()> MessageHelp(const std::string& sHelpID) override;

  void NotifyPageComplete(const std::shared_ptr<Page>& oPage) override;
  void RaiseActionBegin() override { ActionBegin.Raise(); }
  void RaiseActionComplete(bool bRefresh) override { ActionComplete.Raise(bRefresh); }
  void RaiseCommand(Long lCommand) override { Command.Raise(lCommand); }
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

  /// The registry's page of that class, created if there is none.
  template <typename PageClass>
  std::shared_ptr<PageClass> Registered();

  BrowserFrame& Frame(Long lWebBrowser) const;
  void AdoptPage(const std::shared_ptr<Page>& oPage);
  void BringToFront(Long lWebBrowser);
  /// Makes the host's command list show the commands of the page in front; none
  /// if there is no page or it has no commands.
  void ShowCommandsOf(const std::shared_ptr<Page>& oPage);
  void WaitUntil(const std::function<bool()>& oDone);

  static std::shared_ptr<void> s_oResource;

  ZELWbr3::Platform& m_oPlatform;
  std::string m_sCHMPath;
  std::string m_sHTMLPath;
  Long m_lPreferredUnit;
  std::string m_sDecimalSymbole;
  Long m_lDecimalPlaces;
  std::string m_sThousendGroupingSymbole;

  std::array<std::shared_ptr<Page>, zelWebBrowserPageDBAnalyzer + 1> m_registry;  // 0 stays empty
  /// Every page that may still call this control: those of the registry and those
  /// shown by the host.
  std::vector<std::weak_ptr<Page>> m_adopted;
  std::array<std::shared_ptr<BrowserFrame>, 4> m_frames;
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
