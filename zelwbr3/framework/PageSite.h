#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Checked.h"
#include "zelwbr3/platform/Platform.h"

#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3 {

class Page;

/// What a page may ask of the control that shows it. The control implements
/// it privately, so the second half is out of a host's reach.
class PageSite {
 public:
  /// Frames that have a name.
  static constexpr int zelWebBrowserMain = 0;
  static constexpr int zelWebBrowserWork = 1;
  static constexpr int zelWebBrowserDetail = 2;

  virtual Long Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser) = 0;
  virtual void ShowOnTop(Long lWebBrowser) = 0;
  virtual void Refresh(Long lWebBrowser) = 0;
  virtual Long PreferredUnit() const = 0;
  /// A page is loaded in the frame.
  virtual bool HasPage(Long lWebBrowser) const = 0;
  /// The frame's browser is behind with showing what was written.
  virtual bool IsBehind(Long lWebBrowser) const = 0;
  /// The frame lies in front of the others.
  virtual bool IsInFront(int iFrame) const = 0;

  // Pages that other pages open.
  virtual void ShowDefault() = 0;
  virtual void ShowParameter(std::shared_ptr<ZELLib3::Database> oDatabase,
                             std::shared_ptr<ZELLib3::Parameter> oParameter) = 0;
  virtual void ShowSysInfo(std::shared_ptr<ZELLib3::Database> oDatabase,
                           std::shared_ptr<ZELLib3::SysInfo> oSysInfo) = 0;
  virtual void ShowSQLTable(std::shared_ptr<ZELLib3::Database> oDatabase,
                            std::shared_ptr<ZELLib3::SQLTable> oSQLTable) = 0;
  virtual void ShowHistoryItem(std::shared_ptr<ZELLib3::Database> oDatabase,
                               std::shared_ptr<const ZELLib3::HistoryItem> oHistoryItem) = 0;

  virtual const std::string& LocaleDecimalSymbole() const = 0;
  virtual Long LocaleDecimalPlaces() const = 0;
  virtual const std::string& LocaleThousendGroupingSymbole() const = 0;

  /// What opens the help topic of a message; empty when there is no such topic.
  virtual std::function<void()> MessageHelp(const std::string& sHelpID) = 0;

  virtual void NotifyPageComplete(const std::shared_ptr<Page>& oPage) = 0;
  virtual void RaiseActionBegin() = 0;
  virtual void RaiseActionComplete(bool bRefresh) = 0;
  virtual void RaiseCommand(Long lCommand) = 0;

  virtual ZELWbr3::Platform& Platform() = 0;
  /// Sends what was written to the documents so far, before something that
  /// pumps messages lets the user look at them.
  virtual void FlushDocuments() = 0;
  /// Whether clicks and keys are dropped, as they are while one is handled. A
  /// handler that works for long and pumps messages lets them in until it has
  /// finished, and must be ready for what they do. Answers what it was before.
  virtual bool DropEvents(bool bDrop) = 0;

 protected:
  ~PageSite() = default;

  /// Makes this the page's site; the page lets go of it in its CleanUp.
  void Adopt(Page& oPage);
};

}  // namespace ZELWbr3
