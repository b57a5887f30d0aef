#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"

#include <functional>
#include <memory>
#include <string>

namespace ZELLib3 {
class Database;
class Parameter;
class SQLTable;
class SysInfo;
struct HistoryItem;
}  // namespace ZELLib3

namespace ZELWbr3 {

class Page;
class Platform;

/// What a page may ask of the control that shows it. The control implements it
/// privately, so hosts cannot call the members that are only for pages.
class ZELWBR3_EXPORT PageSite {
 public:
  virtual Long Show(const std::shared_ptr<Page>& oPage, Long lWebBrowser) = 0;
  virtual void ShowOnTop(Long lWebBrowser) = 0;
  virtual void Refresh(Long lWebBrowser) = 0;
  virtual Long PreferredUnit() const = 0;
  /// True if the frame has a page.
  virtual bool HasPage(Long lWebBrowser) const = 0;
  /// True if the frame's browser has not shown all changes yet.
  virtual bool IsBehind(Long lWebBrowser) const = 0;
  /// True if the frame is in front of the others.
  virtual bool IsInFront(int iFrame) const = 0;

  // Pages that other pages open.
  virtual void ShowDefault() = 0;
  /// A page by the name of its page file, with that of its tabs in front if it has
  /// any. Does nothing for a name that no page of an instance has.
  virtual void ShowPage(const std::string& sName, std::shared_ptr<ZELLib3::Database> oDatabase, Long lTab) = 0;
  /// Figures over time: those of a group of the instance's samples, with one chosen.
  virtual void ShowCharts(std::shared_ptr<ZELLib3::Database> oDatabase, const std::string& sGroup,
                          const std::string& sFigure) = 0;
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

  /// A function that opens the help topic of a message; empty if there is no such
  /// topic.
  virtual std::function<void()> MessageHelp(const std::string& sHelpID) = 0;

  virtual void NotifyPageComplete(const std::shared_ptr<Page>& oPage) = 0;
  virtual void RaiseActionBegin() = 0;
  virtual void RaiseActionComplete(bool bRefresh) = 0;
  virtual void RaiseCommand(Long lCommand) = 0;

  virtual ZELWbr3::Platform& Platform() = 0;
  /// Sends all changes to the browser. Call it before pumping messages, so that
  /// the user sees them.
  virtual void FlushDocuments() = 0;
  /// Sets whether clicks and keys are dropped, as they are while one is handled;
  /// returns the previous setting. A long-running handler that pumps messages may
  /// allow them until it has finished, and must then cope with what they do.
  virtual bool DropEvents(bool bDrop) = 0;

 protected:
  ~PageSite() = default;

  /// Makes this the page's site, until the page's CleanUp.
  void Adopt(Page& oPage);
};

}  // namespace ZELWbr3
