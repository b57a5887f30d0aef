#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Event.h"
#include "zelwbr3/framework/FrontBoxes.h"
#include "zelwbr3/framework/Page.h"
#include "zelwbr3/framework/ZELHTMLForm.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/framework/clsSize.h"

#include <functional>
#include <optional>

namespace ZELWbr3 {

/// What the pages that show an instance have in common: the instance, the
/// host's command list, the frame of the page file, refresh and close, command
/// links, and the protocol of a page's tasks.
///
/// A task is what a page does from where a fill, a click, a key, a command-list
/// item or a command enters it. What goes wrong in it is shown in the common
/// error display and never leaves the page, except for WaitError: a wait that
/// cannot end. Verbs that may pump messages (Boxes, Operate, Report..., Poll,
/// Announce, Act) end the task with PageLeft when the page was left in the
/// meantime, so nothing needs to be checked after them.
class DataPage : public Page {
 public:
  /// Common commands; from 2 on they are the page's own.
  static constexpr int CommandRefresh = 0;
  static constexpr int CommandClose = 1;

  const std::shared_ptr<ZELLib3::Database>& Database() const { return m_oDatabase; }
  void Database(std::shared_ptr<ZELLib3::Database> oDatabase) { m_oDatabase = std::move(oDatabase); }

  std::shared_ptr<ZELCmd3::FCommandlist> Commandlist() const override { return m_oCL; }
  void Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist);

  /// Shows the page with the Database that was set.
  void Show() { ShowInFrame(); }
  /// Keeps the instance as Database and shows the page.
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase);

  void Hide() override;
  void CleanUp() override;

  /// Carries out a command of the page. An unknown one does nothing, nor do the
  /// page's own while it is not shown. What fails is shown in the common error
  /// display. Throws WaitError, and nothing else, for a wait that cannot end: the
  /// program is closing, the control was destroyed, the browser's process died.
  void Command(Long lCommand);

  bool HandleOnClick(const std::string& sID) override;
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override;
  /// A click in the command list is the command with the item's key.
  void oCL_ItemClick(const ZELCmd3::CommandItem& oItem);

 protected:
  /// Writes the content. When it fails, what was written stays.
  virtual void FillContent() = 0;
  /// The page's own clicks, and commands from 2 on, which are given only while
  /// the page is shown.
  virtual bool OnClick(const std::string&) { return false; }
  virtual void OnCommand(Long) {}
  /// Whether the footer is shown together with the content.
  virtual bool ShowsFooter() const { return false; }
  /// Leaves the page; by default for the main frame.
  virtual void Close();
  /// Leaves a page that others have opened: for the work frame when a page is
  /// there, else for the main frame.
  void CloseDetail();

  ZELHTMLForm& Form() { return m_oForm; }
  const UserLocale& Locale() const { return Browser().Platform().UserLocale(); }

  /// Writes the text of an element that the page file must have; throws
  /// std::runtime_error that names it otherwise.
  void SetText(std::string_view sID, std::string_view sText);
  /// The same for an element that the page file may lack.
  void SetTextIfPresent(std::string_view sID, std::string_view sText);
  Element& RequiredElement(std::string_view sID) const;
  /// The same for a row of a table, whose id other tables may use, too.
  Element& RequiredRow(std::string_view sTable, std::string_view sID) const;
  /// Writes the user's number settings into the three elements from which a
  /// page's own script reads them; one that the page file lacks is skipped.
  void FillLocale();

  /// A size in the unit that the host prefers; lUnit is a unit of clsSize. Pages
  /// are the instance's, whose size is asked for once a fill.
  std::string SizeText(double dSize, Long lUnit = clsSize::Pages);

  /// The page's command list with nothing in it but "&Close"; null when the
  /// host has given none.
  std::shared_ptr<ZELCmd3::FCommandlist> NewCommandlist();

  // ---- for tasks ----

  /// A command given by the page itself, within a task.
  void CarryOut(Long lCommand);
  /// An action of the page: the host hears of its begin, and of its end when the
  /// task has ended and its failures were shown; the wait cursor stands
  /// meanwhile.
  void Act(const std::function<void()>& oAction);
  /// Tells the host that an action begins which ends with the reload of the
  /// document.
  void AnnounceReload();

  /// For what the page asks the user.
  FrontBoxes Boxes() { return Boxes(Needs::Page); }

  /// The common error display for the instance's last error, or a given one.
  void ReportLastError();
  void ReportError(const ZELLib3::Error& oError);
  /// Runs a part whose failure is shown but does not end the task. False when it
  /// failed.
  bool Attempt(const std::function<void()>& oPart);

  /// Clicks and keys are ignored: the document is being replaced, or the page is
  /// busy.
  bool IgnoresEvents() const { return NoEvents() || m_lBusy > 0; }

  /// While one lives the wait cursor shows, and clicks and keys are ignored.
  class Busy {
   public:
    explicit Busy(DataPage& oPage);
    ~Busy();
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

   private:
    std::shared_ptr<DataPage> m_oPage;
    clsHourglass::Scope m_oWait;
  };

  /// Runs an operation of the instance that may take seconds; the page is busy
  /// and the window repainted meanwhile. When the operation fails, that is shown
  /// and the answer is false.
  bool Operate(const std::function<bool()>& oOperation);

  /// Lets the message loop handle what has arrived, clicks and keys included, and
  /// goes on until the screen is no longer behind with what the page has written
  /// or oEnough says that this is enough.
  void Poll(const std::function<bool()>& oEnough);

  /// Runs oTask as a task of the page. For whatever enters the page; nested only
  /// where messages are pumped.
  void Enter(const std::function<void()>& oTask);

 private:
  /// What a verb that pumps messages must find again afterwards.
  enum class Needs {
    Page,      ///< the page, shown, with the same instance
    Document,  ///< and the same document, which the task goes on writing
  };

  void Fill() override;
  /// Runs something that may pump messages; throws PageLeft when it took away
  /// what the task needs.
  void Pumping(Needs eNeeds, const std::function<void()>& oWork);
  FrontBoxes Boxes(Needs eNeeds);
  void ShowFailure(const std::function<void(FrontBoxes&)>& oShow);
  void Report(const std::exception& oFailure);
  const std::shared_ptr<clsHourglass>& Hourglass();

  std::shared_ptr<ZELLib3::Database> m_oDatabase;
  std::shared_ptr<ZELCmd3::FCommandlist> m_oCL;
  Connection m_oItemClick;
  ZELHTMLForm m_oForm;
  std::shared_ptr<clsHourglass> m_oHourglass;
  std::optional<clsSize> m_oSize;  ///< of this fill
  Long m_lBusy = 0;
  bool m_bActing = false;  ///< the task has announced an action
};

}  // namespace ZELWbr3
