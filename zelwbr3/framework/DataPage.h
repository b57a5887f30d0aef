#pragma once

#include "zelwbr3/framework/Page.h"
#include "zelwbr3/framework/Samples.h"

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZELLib3 {
class Database;
struct Error;
}  // namespace ZELLib3

namespace ZELCmd3 {
struct CommandItem;
}

namespace ZELWbr3 {

struct Date;
class FrontBoxes;
class UserLocale;
class ZELHTMLForm;
class clsHourglass;

/// Base class of pages that show an instance: the instance, the host's command
/// list, the frame of the page file, refresh and close, command links, and the
/// protocol of a page's tasks.
///
/// A task is everything a page does for one fill, click, key, command-list item
/// or command. Its errors are shown in the common error display and never leave
/// the page, except for WaitError: a wait that cannot end. Verbs that may pump
/// messages (Boxes, Operate, Report..., Poll, Announce, Act) end the task with
/// PageLeft if the page was left in the meantime, so there is nothing to check
/// after them.
///
/// The same holds for reading the instance: while a task goes on, what the
/// instance has to wait for runs in the background, and messages are pumped if
/// that takes long. The page is busy then; Escape ends the reading and the task.
class ZELWBR3_EXPORT DataPage : public Page {
 public:
  ~DataPage() override;

  /// Common commands; a page's own commands start at 2.
  static constexpr int CommandRefresh = 0;
  static constexpr int CommandClose = 1;

  const std::shared_ptr<ZELLib3::Database>& Database() const;
  void Database(std::shared_ptr<ZELLib3::Database> oDatabase);

  std::shared_ptr<ZELCmd3::FCommandlist> Commandlist() const override;
  void Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist);

  /// Shows the page with the present Database.
  void Show() { ShowInFrame(); }
  /// Keeps the instance as Database and shows the page.
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase);

  void Hide() override;
  void CleanUp() override;

  /// Carries out a command of the page. Unknown commands do nothing, and neither
  /// do the page's own commands while it is not shown. Errors are shown in the
  /// common error display. Throws only WaitError, for a wait that cannot end: the
  /// program is closing, the control was destroyed, the browser's process died.
  void Command(Long lCommand);

  /// Refreshes the page although nobody has asked for it, by the clock: what cannot
  /// be read is said in the page and opens no box.
  void RefreshUnasked();
  /// False while a refresh would take something from the user, or while the page is
  /// busy.
  virtual bool CanRefreshUnasked() const;
  /// The last fill could read nothing, so what is shown is old or missing; worth to be
  /// tried again soon.
  bool IsUnread() const;

  bool HandleOnClick(const std::string& sID) override;
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override;
  /// A click in the command list runs the command with the item's key.
  void oCL_ItemClick(const ZELCmd3::CommandItem& oItem);

 protected:
  /// Writes the content. If it fails, what has been written stays.
  virtual void FillContent() = 0;
  /// The page's own clicks, and its commands from 2 on; only called while the
  /// page is shown.
  virtual bool OnClick(const std::string&) { return false; }
  virtual void OnCommand(Long) {}
  /// True if the footer is shown together with the content.
  virtual bool ShowsFooter() const { return false; }
  /// Leaves the page, by default for the main frame.
  virtual void Close();
  /// Leaves a page that another page has opened: for the work frame if it has a
  /// page, else for the main frame.
  void CloseDetail();

  DataPage();

  ZELHTMLForm& Form();
  const UserLocale& Locale() const;

  /// Writes the text of an element. Throws std::runtime_error, which names it, if
  /// the page file has no such element.
  void SetText(std::string_view sID, std::string_view sText);
  /// The same for an optional element.
  void SetTextIfPresent(std::string_view sID, std::string_view sText);
  Element& RequiredElement(std::string_view sID) const;
  /// The same for a row of a table. Other tables may have rows with this id.
  Element& RequiredRow(std::string_view sTable, std::string_view sID) const;
  /// Writes the user's number settings into the three elements that page scripts
  /// read them from; missing elements are skipped.
  void FillLocale();

  /// Adds figures that were read now to the instance's samples, and writes the last
  /// of them into the page for its curves.
  void Sample(const std::string& sGroup, std::vector<Samples::Figure> figures);

  /// A size in the host's preferred unit; lUnit is a unit of clsSize. Pages are
  /// the instance's; their size is read once per fill.
  std::string SizeText(double dSize, Long lUnit);
  /// A number of pages.
  std::string SizeText(double dPages);
  /// The same in pages, exactly, for the tooltip; empty if that is what SizeText shows.
  std::string ExactText(double dSize, Long lUnit);
  /// Writes a size, with the exact pages for its tooltip.
  void SetSize(Element& oElement, double dSize, Long lUnit);
  static void SetExact(Element& oElement, const std::string& sExact);

  /// For a page about the whole instance: there is no connection to it. The page says
  /// so instead of its content, since when and why, and is tried again like one that
  /// could not be read.
  void NoteGone();

  /// The page's command list with only "&Close" in it; null if the host has not
  /// provided one.
  std::shared_ptr<ZELCmd3::FCommandlist> NewCommandlist();

  // ---- for tasks ----

  /// Carries out a command within a task.
  void CarryOut(Long lCommand);
  /// Runs an action of the page with the wait cursor. Tells the host about its
  /// begin, and about its end when the task has ended and its errors have been
  /// shown.
  void Act(const std::function<void()>& oAction);
  /// Tells the host that an action begins that ends with the reload of the
  /// document.
  void AnnounceReload();

  /// For asking the user.
  FrontBoxes Boxes();

  /// Shows the instance's last error, or a given one, in the common error display.
  void ReportLastError();
  void ReportError(const ZELLib3::Error& oError);
  /// Runs a part of a task. If it fails, shows the error, does not end the task
  /// and returns false.
  bool Attempt(const std::function<void()>& oPart);

  /// Clicks and keys are ignored: the document is being replaced, or the page is
  /// busy.
  bool IgnoresEvents() const;

  /// While an object lives, the wait cursor is shown and clicks and keys are
  /// ignored.
  class Busy {
   public:
    explicit Busy(DataPage& oPage);
    ~Busy();
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

   private:
    std::shared_ptr<DataPage> m_oPage;
    std::shared_ptr<void> m_oWait;
  };

  /// Runs an operation of the instance that may take seconds. While it runs, the
  /// page is busy and the window is repainted. If the operation fails, shows the
  /// error and returns false.
  bool Operate(const std::function<bool()>& oOperation);

  /// Handles messages that have arrived, including clicks and keys, until the
  /// browser has caught up with what the page has written or oEnough returns
  /// true.
  void Poll(const std::function<bool()>& oEnough);

  /// Runs oTask as a task of the page. For every entry into the page; tasks are
  /// only nested where messages are pumped.
  void Enter(const std::function<void()>& oTask);

  /// Escape has ended a part of a reading; oFailure is what that part threw, or
  /// null if it could still be read. Ends the task and tells the user, unless
  /// overridden.
  virtual void OnStopped(const std::exception_ptr& oFailure);

 private:
  /// What must be unchanged after pumping messages.
  enum class Needs {
    Page,      ///< the page is shown, with the same instance
    Document,  ///< and with the same document, which the task goes on writing
  };

  void Fill() override;
  /// Says in the page, where its file has a place for that, what could not be read.
  void ShowUnread();
  void ShowGone(const Date& dSince);
  /// Keeps the first failure of a fill.
  void NoteUnread(const std::string& sText, const std::function<void()>& oHelp);
  /// Runs something that may pump messages; throws PageLeft if the task then no
  /// longer has what it needs.
  void Pumping(Needs eNeeds, const std::function<void()>& oWork);
  /// Runs a part of a reading that may take long.
  void ReadInBackground(ZELLib3::Database& oDatabase, const std::function<void()>& oPart);
  FrontBoxes Boxes(Needs eNeeds);
  void ShowFailure(const std::function<void(FrontBoxes&)>& oShow);
  void Report(const std::exception& oFailure);
  const std::shared_ptr<clsHourglass>& Hourglass();

  struct State;
  std::unique_ptr<State> m_oState;
};

}  // namespace ZELWbr3
