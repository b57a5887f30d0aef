#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/Page.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/platform/WaitError.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3 {

class BrowserControl;
class Document;
class Platform;

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
/// Everything happens on the thread that made the control. A call on another one
/// raises std::logic_error, except for Post. Show waits by pumping messages,
/// without a time-out; during that the host may call the control again. A wait
/// that cannot end raises WaitError. Nothing is persisted.
///
///     Browser oBrowser(oPlatform);
///     oBrowser.HTMLPath("/usr/share/zelwbr3/html");
///     oBrowser.PageMain()->Show(oDatabase);
class ZELWBR3_EXPORT Browser {
 public:
  /// The platform must outlive the control.
  explicit Browser(ZELWbr3::Platform& oPlatform);
  /// Cleans up the pages; a wait in progress ends with an error.
  ~Browser();
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;

  /// Path of the compiled help file, or of a folder with its topics.
  const std::string& CHMPath() const;
  void CHMPath(const std::string& sPath);
  /// Folder of the page files, without a trailing separator.
  const std::string& HTMLPath() const;
  void HTMLPath(const std::string& sPath);
  /// Several folders of page files, searched in this order: a host's own pages
  /// beside the installed ones. A page file may use style sheets, scripts and
  /// pictures of all of them. HTMLPath is the first one. Raises
  /// std::invalid_argument for an empty list.
  const std::vector<std::string>& HTMLPaths() const;
  void HTMLPaths(std::vector<std::string> paths);
  /// The unit to show sizes in: 0 KB, 1 MB, 2 GB, 3 pages, 4 automatic, -1 bytes.
  /// It is the number of a unit of clsSize, minus one.
  Long PreferredUnit() const;
  void PreferredUnit(Long lUnit);
  /// An object of the host that all pages of all controls share; set it before a second thread shows pages.
  static std::shared_ptr<void> Resource();
  static void Resource(std::shared_ptr<void> oResource);
  /// The user's number settings, read when the control was created.
  const std::string& LocaleDecimalSymbole() const;
  Long LocaleDecimalPlaces() const;
  const std::string& LocaleThousendGroupingSymbole() const;
  /// Gives this command list to all pages of the control, also to those that do not
  /// exist yet; pages of the host's own get theirs from the host. Null at first.
  std::shared_ptr<ZELCmd3::FCommandlist> Commandlist() const;
  void Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist);
  /// Page type of the page that completed last; initially 0.
  Long ActPage() const;
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
  Long Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser);
  /// Brings a frame to the front and announces its page, if it has one, as
  /// complete again.
  void ShowOnTop(Long lWebBrowser);
  /// Navigates a frame anywhere, http and https included, without a page and
  /// without waiting. An empty URL does nothing.
  void Navigate(const std::string& sURL, Long lWebBrowser);
  /// Loads the frame's URL again, without waiting; the page fills it again. Does
  /// nothing if the frame was never navigated.
  void Refresh(Long lWebBrowser);
  /// Takes the frame's page away and empties it.
  void Clear(Long lWebBrowser);
  /// Explains a message with a topic of the help file, in a window of its own;
  /// returns when the user has closed it.
  void ShowMessageHelpID(const std::string& sHelpID);

  /// Gives all frames the size of the control, in the platform's pixels.
  void Resize(int iWidth, int iHeight);

  /// Takes work from any thread: the control's thread does it when it next handles
  /// messages, also during a wait. Work left when the control is destroyed is
  /// dropped. What it throws is treated like what a handler of an event throws.
  /// Raises std::logic_error on a platform that takes none.
  void Post(std::function<void()> oWork);

  /// The document of the frame in front; null if there is none.
  std::shared_ptr<ZELWbr3::Document> VisibleDocument() const;

  // Keys that the control itself receives, not a document: the key code and
  // the shift state (1 Shift, 2 Ctrl, 4 Alt), or the character. A handler that sets
  // the code to 0 keeps the key from the handlers of the program's windows; other
  // values that it writes only reach the handlers connected after it.
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
  std::unique_ptr<BrowserControl> m_oControl;  ///< last, so that events outlive it
};

}  // namespace ZELWbr3
