#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Event.h"
#include "zelwbr3/framework/FrontBoxes.h"
#include "zelwbr3/framework/Page.h"
#include "zelwbr3/framework/ZELHTMLForm.h"
#include "zelwbr3/framework/clsHourglass.h"

#include <functional>

namespace ZELWbr3 {

/// What the pages that show an instance have in common: the instance, the
/// host's command list, the frame of the page file, refresh and close, command
/// links, and the rule that no failure leaves the page: what goes wrong while
/// the page works is shown in the common error display.
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

  /// Carries out a command of the page; an unknown one does nothing.
  void Command(Long lCommand);

  bool HandleOnClick(const std::string& sID) override;
  bool HandleOnKeyDown(Long& lKeyCode, Element* oElement) override;
  /// A click in the command list is the command with the item's key.
  void oCL_ItemClick(const ZELCmd3::CommandItem& oItem);

 protected:
  /// Writes the content. What it throws is reported; what was written stays.
  virtual void FillContent() = 0;
  /// The page's own clicks, and commands from 2 on. What they throw is
  /// reported.
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
  Element& RequiredElement(std::string_view sID) const;
  /// The same for a row of a table, whose id other tables may use, too.
  Element& RequiredRow(std::string_view sTable, std::string_view sID) const;
  /// Writes the user's number settings into the three elements from which a
  /// page's own script reads them; one that the page file lacks is skipped.
  void FillLocale();

  /// The common error display for the instance's last error, or a given one.
  /// Throws WaitError, which ends what the page was doing, when the host hides
  /// the page or loads it anew meanwhile.
  void ReportLastError();
  void ReportError(const ZELLib3::Error& oError);

  /// For what the page asks the user.
  FrontBoxes Boxes() { return {Browser(), Hourglass()}; }

  /// Clicks and keys are ignored: the document is being replaced, or the page is
  /// busy.
  bool IgnoresEvents() const { return NoEvents() || m_lBusy > 0; }

  /// While one lives the wait cursor shows, and clicks and keys are ignored.
  /// Lets the screen catch up first. Throws WaitError, which ends what the page
  /// was doing, when the page is cleaned up meanwhile.
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
  /// and the window repainted meanwhile. False when it failed; what it throws
  /// is thrown on.
  bool Operate(const std::function<bool()>& oOperation);

  /// Runs something and reports what it throws; false when it threw. A wait
  /// that cannot end is no failure of the page and passes.
  bool Guarded(const std::function<void()>& oWork);

  /// Carries out a command of the page's own: the host hears of its begin and
  /// end, the wait cursor stands meanwhile, what it throws is reported.
  void Act(const std::function<void()>& oAction);

 private:
  void Fill() override;
  /// Guarded, for what the control or the command list calls.
  void Handle(const std::function<void()>& oWork);
  /// The instance is asked nothing while one of its operations runs.
  void AwaitInstance();
  void ShowFailure(const std::function<void(FrontBoxes&)>& oShow);
  const std::shared_ptr<clsHourglass>& Hourglass();

  std::shared_ptr<ZELLib3::Database> m_oDatabase;
  std::shared_ptr<ZELCmd3::FCommandlist> m_oCL;
  Connection m_oItemClick;
  ZELHTMLForm m_oForm;
  std::shared_ptr<clsHourglass> m_oHourglass;
  Long m_lBusy = 0;
};

}  // namespace ZELWbr3
