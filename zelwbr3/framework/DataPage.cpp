#include "zelwbr3/framework/DataPage.h"

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/FrontBoxes.h"
#include "zelwbr3/framework/KeyCode.h"
#include "zelwbr3/framework/PageLeft.h"
#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/framework/ReadingStopped.h"
#include "zelwbr3/framework/SeriesElements.h"
#include "zelwbr3/framework/WaitRunnerScope.h"
#include "zelwbr3/framework/ZELHTMLForm.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/framework/clsSize.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modCmdEnum.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/framework/modPicture.h"
#include "zelwbr3/framework/modZELError.h"
#include "zelwbr3/platform/FCommandlist.h"
#include "zelwbr3/platform/MessagePump.h"
#include "zelwbr3/platform/Platform.h"

#include <optional>
#include <stdexcept>
#include <utility>

namespace ZELWbr3 {

struct DataPage::State {
  std::shared_ptr<ZELLib3::Database> oDatabase;
  std::shared_ptr<ZELCmd3::FCommandlist> oCL;
  ScopedConnection oItemClick;
  ZELHTMLForm oForm;
  std::shared_ptr<clsHourglass> oHourglass;
  std::string sSamples;          ///< the group of the last figures sampled
  std::optional<clsSize> oSize;  ///< of this fill
  Long lBusy = 0;
  bool bActing = false;   ///< the task has announced an action
  bool bUnasked = false;  ///< the refresh that goes on was not asked for
  bool bFilling = false;
  int iParts = 0;  ///< parts of a task that go on, one in the other
  struct Unread {
    std::string Text;
    std::function<void()> Help;  ///< empty for none
    bool All = false;            ///< not only a part of the page
    bool Gone = false;           ///< there is no connection
  };
  std::optional<Unread> oUnread;  ///< what this fill could not read
  Date dUnread;                   ///< since when, zero while it can be read
};

DataPage::DataPage() : m_oState(std::make_unique<State>()) {}
DataPage::~DataPage() = default;

const std::shared_ptr<ZELLib3::Database>& DataPage::Database() const { return m_oState->oDatabase; }
void DataPage::Database(std::shared_ptr<ZELLib3::Database> oDatabase) { m_oState->oDatabase = std::move(oDatabase); }
std::shared_ptr<ZELCmd3::FCommandlist> DataPage::Commandlist() const { return m_oState->oCL; }
ZELHTMLForm& DataPage::Form() { return m_oState->oForm; }
const UserLocale& DataPage::Locale() const { return Browser().Platform().UserLocale(); }
FrontBoxes DataPage::Boxes() { return Boxes(Needs::Page); }
bool DataPage::IgnoresEvents() const { return NoEvents() || m_oState->lBusy > 0; }

void DataPage::Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist) {
  m_oState->oItemClick.Disconnect();
  m_oState->oCL = std::move(oCommandlist);
  if (m_oState->oCL == nullptr) return;
  m_oState->oItemClick = m_oState->oCL->ItemClick.Connect([this](Long lPageType, const ZELCmd3::CommandItem& oItem) {
    const auto oSelf = weak_from_this().lock();  // the click may clean up the control
    if (lPageType == PageType()) oCL_ItemClick(oItem);
  });
}

void DataPage::Show(std::shared_ptr<ZELLib3::Database> oDatabase) {
  m_oState->oDatabase = std::move(oDatabase);
  Show();
}

void DataPage::Hide() {
  Page::Hide();
  m_oState->dUnread = {};
  m_oState->oForm.CleanUp();
  m_oState->oDatabase.reset();
}

void DataPage::CleanUp() {
  if (m_oState->oCL != nullptr) m_oState->oCL->Reset(PageType());
  Commandlist(nullptr);
  m_oState->oDatabase.reset();
  m_oState->oForm.CleanUp();
  m_oState->oHourglass.reset();
  m_oState->oSize.reset();
  m_oState->dUnread = {};
  Page::CleanUp();
}

void DataPage::Fill() {
  if (Document()->IsErrorPage()) return;  // has nothing to fill
  clsHourglass::Scope oWait(Hourglass());
  m_oState->oForm.Init(Document());
  m_oState->oSize.reset();
  m_oState->oUnread.reset();
  m_oState->bFilling = true;
  Finally(
      [this] {
        Enter([this] {
          if (m_oState->oDatabase == nullptr) throw std::logic_error("The page " + Name() + " has no instance to show");
          if (Element* oBody = Document()->body(); oBody != nullptr && Database()->CountsPerConnection()) {
            oBody->setAttribute("data-zel-scope", "connection");
          }
          FillContent();
        });
      },
      [this] { m_oState->bFilling = m_oState->bUnasked = false; });
  ShowUnread();
  m_oState->oForm.ShowContent(ShowsFooter());
}

bool DataPage::CanRefreshUnasked() const { return Document() != nullptr && !IgnoresEvents(); }

void DataPage::RefreshUnasked() {
  if (!CanRefreshUnasked()) return;
  m_oState->bUnasked = true;
  Command(CommandRefresh);
}

void DataPage::NoteUnread(const std::string& sText, const std::function<void()>& oHelp) {
  if (m_oState->bFilling && !m_oState->oUnread)
    m_oState->oUnread = {Text::OneLine(sText), oHelp, m_oState->iParts <= 1};
}

bool DataPage::IsUnread() const { return m_oState->oUnread && m_oState->oUnread->All; }

void DataPage::NoteGone() {
  const ZELLib3::Error oWhy = m_oState->oDatabase->LastError();
  m_oState->oUnread = {Text::OneLine(std::to_string(oWhy.ErrorCode) + " " + oWhy.ErrorText), {}, true, true};
}

void DataPage::ShowUnread() {
  Date& dSince = m_oState->dUnread;
  const Date dBefore = std::exchange(dSince, !IsUnread() ? Date() : dSince == Date() ? Calendar::Now() : dSince);
  if (Document() == nullptr || !m_oState->oUnread) return;
  if (m_oState->oUnread->Gone) return ShowGone(dBefore);
  Element* oBlock = Document()->all().item("divUnread");
  if (oBlock == nullptr) return;
  const std::string sSince = dBefore == Date() ? "" : " since " + Locale().LongTime(dBefore);
  SetTextIfPresent("txtUnread",
                   (m_oState->oUnread->All ? "Could not be read" + sSince : "Not everything could be read") + ": " +
                       m_oState->oUnread->Text);
  modElement::ShowElement(Document()->all().item("lnkUnreadHelp"), m_oState->oUnread->Help != nullptr);
  // What was shown before stays, marked as old.
  if (m_oState->oUnread->All) oBlock->setAttribute("data-all", "true");
  modElement::ShowElement(oBlock, true);
}

void DataPage::ShowGone(const Date& dSince) {
  Element* oBlock = Document()->all().item("divGone");
  if (oBlock == nullptr) return;
  SetTextIfPresent("txtGoneName", m_oState->oDatabase->InstanceName());
  SetTextIfPresent("txtGoneWhy", m_oState->oUnread->Text);
  const Date dNow = Calendar::Now();
  // On another day, the time alone would be misleading.
  const bool bToday = Calendar::CompactDay(dSince) == Calendar::CompactDay(dNow);
  if (dSince != Date()) {
    SetTextIfPresent("txtGoneSince",
                     "Since " + (bToday ? Locale().LongTime(dSince) : modFormat::GeneralDate(dSince, Locale())) +
                         ", last tried " + Locale().LongTime(dNow));
  }
  modElement::ShowElement(oBlock, true);
}

void DataPage::Command(Long lCommand) {
  const auto oSelf = shared_from_this();
  Enter([&] { CarryOut(lCommand); });
  // Not a document event, which would send the changes at its end.
  if (HasBrowser()) Browser().FlushDocuments();
}

void DataPage::CarryOut(Long lCommand) {
  switch (lCommand) {
    case CommandRefresh:
      AnnounceReload();
      Browser().Refresh(WebBrowser());
      break;
    case CommandClose:
      Close();
      break;
    default:
      if (Document() != nullptr && m_oState->oDatabase != nullptr) OnCommand(lCommand);
  }
}

void DataPage::Close() { Browser().ShowOnTop(zelWebBrowserMain); }

void DataPage::CloseDetail() {
  const bool bWork = Browser().HasPage(zelWebBrowserWork);
  Browser().ShowOnTop(bWork ? zelWebBrowserWork : zelWebBrowserMain);
}

bool DataPage::HandleOnClick(const std::string& sID) {
  if (IgnoresEvents()) return false;
  bool bHandled = true;  // even if that fails
  Enter([&] {
    if (sID == "btnFormClose") {
      CarryOut(CommandClose);
    } else if (std::string sFigure; !m_oState->sSamples.empty() && modCells::AfterPrefix("SERIES", sID, sFigure)) {
      Act([&] { Browser().ShowCharts(Database(), m_oState->sSamples, sFigure); });
    } else if (sID == "lnkTryAgain" || sID == "btnTryAgain") {
      CarryOut(CommandRefresh);
    } else if (sID == "lnkUnreadHelp") {
      if (m_oState->oUnread && m_oState->oUnread->Help) Boxes().ShowHelp(std::function(m_oState->oUnread->Help));
    } else if (const auto lCommand = modCmdEnum::LinkedCommand(sID)) {
      Pumping(Needs::Page, [&] { Browser().RaiseCommand(*lCommand); });
    } else {
      bHandled = OnClick(sID);
    }
  });
  return bHandled;
}

bool DataPage::HandleOnKeyDown(Long& lKeyCode, Element*) {
  if (IgnoresEvents() || (lKeyCode != KeyCode::Escape && lKeyCode != KeyCode::F5)) return false;
  Enter([&] { CarryOut(lKeyCode == KeyCode::Escape ? CommandClose : CommandRefresh); });
  return true;
}

void DataPage::oCL_ItemClick(const ZELCmd3::CommandItem& oItem) {
  if (!IgnoresEvents()) Command(oItem.Key);
}

void DataPage::SetText(std::string_view sID, std::string_view sText) {
  RequiredElement(sID).innerText(modCells::Known(sText));
}

void DataPage::SetTextIfPresent(std::string_view sID, std::string_view sText) {
  if (Element* oElement = Document()->all().item(sID)) oElement->innerText(modCells::Known(sText));
}

Element& DataPage::RequiredElement(std::string_view sID) const {
  Element* oElement = Document() == nullptr ? nullptr : Document()->all().item(sID);
  if (oElement == nullptr) {
    throw std::runtime_error("The page file " + Name() + ".htm has no element \"" + std::string(sID) + "\"");
  }
  return *oElement;
}

Element& DataPage::RequiredRow(std::string_view sTable, std::string_view sID) const {
  Element* oRow = RequiredElement(sTable).all().item(sID);
  if (oRow == nullptr) {
    throw std::runtime_error("The page file " + Name() + ".htm has no row \"" + std::string(sID) + "\" in \"" +
                             std::string(sTable) + "\"");
  }
  return *oRow;
}

void DataPage::FillLocale() {
  SetTextIfPresent("LocaleDecimalSymbole", Browser().LocaleDecimalSymbole());
  SetTextIfPresent("LocaleDecimalPlaces", std::to_string(Browser().LocaleDecimalPlaces()));
  SetTextIfPresent("LocaleThousendGroupingSymbole", Browser().LocaleThousendGroupingSymbole());
}

void DataPage::Sample(const std::string& sGroup, std::vector<Samples::Figure> figures) {
  constexpr std::size_t MostOfCurve = 120;  // ten minutes of readings every five seconds
  const auto oSamples = Samples::Of(Database());
  oSamples->Add(sGroup, std::move(figures));
  m_oState->sSamples = sGroup;
  SeriesElements::Fill(*Document(), *oSamples->Of(sGroup), MostOfCurve);
}

std::string DataPage::SizeText(double dSize, Long lUnit) {
  if (!m_oState->oSize) {
    m_oState->oSize.emplace(Locale());
    m_oState->oSize->PageBytes(m_oState->oDatabase->PageSize());
  }
  return m_oState->oSize->NumberStr(dSize, lUnit, Browser().PreferredUnit() + 1, true);
}

std::string DataPage::ExactText(double dSize, Long lUnit) {
  constexpr int OneKB = 1024;
  const Long lShown = Browser().PreferredUnit() + 1;
  if (lShown == int{clsSize::Pages} || dSize < 0) return {};
  static_cast<void>(SizeText(dSize, lUnit));
  if (m_oState->oSize->PageBytes() < OneKB) return {};  // which sizes are no pages of
  return m_oState->oSize->NumberStr(dSize, lUnit, int{clsSize::Pages}, true);
}

void DataPage::SetSize(Element& oElement, double dSize, Long lUnit) {
  modCells::SetCellText(oElement, SizeText(dSize, lUnit));
  SetExact(oElement, ExactText(dSize, lUnit));
}

void DataPage::SetExact(Element& oElement, const std::string& sExact) {
  if (!sExact.empty()) oElement.setAttribute("data-zel-exact", sExact);
}

std::string DataPage::SizeText(double dPages) { return SizeText(dPages, int{clsSize::Pages}); }

std::shared_ptr<ZELCmd3::FCommandlist> DataPage::NewCommandlist() {
  if (m_oState->oCL == nullptr) return nullptr;
  m_oState->oCL->Reset(PageType());
  m_oState->oCL->Add(PageType(), {int{CommandClose}, "&Close", modPicture::Close});
  return m_oState->oCL;
}

void DataPage::Enter(const std::function<void()>& oTask) {
  if (!HasBrowser()) return;  // the page has been cleaned up
  const auto oSelf = shared_from_this();
  MessagePump& oPump = Browser().Platform().MessagePump();
  const bool bOuterActs = std::exchange(m_oState->bActing, false);
  Finally(
      [&] {
        try {
          // Nothing is read from the instance while one of its operations runs.
          Pumping(Needs::Document, [&] { oPump.AwaitBackground(); });
          const WaitRunnerScope oScope(m_oState->oDatabase,
                                       [this, pDatabase = m_oState->oDatabase.get()](const auto& oPart) {
                                         ReadInBackground(*pDatabase, oPart);
                                       });
          try {
            Attempt(oTask);
          } catch (const ReadingStopped& oStopped) {
            if (oStopped.Failure != nullptr) Attempt([&] { std::rethrow_exception(oStopped.Failure); });
          }
        } catch (const PageLeft&) {
          // The caller that hid the page knows about it. No document will arrive
          // any more to end the action.
          if (Document() == nullptr) EndReload();
        }
      },
      [&] {
        if (std::exchange(m_oState->bActing, bOuterActs) && HasBrowser()) Browser().RaiseActionComplete(false);
      });
}

bool DataPage::Attempt(const std::function<void()>& oPart) {
  bool bDone = false;
  ++m_oState->iParts;
  Finally(
      [&] {
        try {
          oPart();
          bDone = true;
        } catch (const WaitError&) {
          throw;
        } catch (const std::exception& oFailure) {
          Report(oFailure);
        }
      },
      [this] { --m_oState->iParts; });
  return bDone;
}

void DataPage::Pumping(Needs eNeeds, const std::function<void()>& oWork) {
  const auto oDocument = Document();
  const auto oDatabase = m_oState->oDatabase;
  {
    const WaitRunnerScope::Pause oPause;
    oWork();
  }
  const bool bHidden = oDocument != nullptr && Document() == nullptr;
  const bool bReloaded = eNeeds == Needs::Document && Document() != oDocument;
  if (!HasBrowser() || bHidden || bReloaded || m_oState->oDatabase != oDatabase) throw PageLeft{};
}

void DataPage::Act(const std::function<void()>& oAction) {
  clsHourglass::Scope oWait(Hourglass());
  m_oState->bActing = true;
  Pumping(Needs::Page, [this] { Browser().RaiseActionBegin(); });
  oAction();
}

void DataPage::AnnounceReload() {
  Pumping(Needs::Page, [this] { BeginReload(); });
}

FrontBoxes DataPage::Boxes(Needs eNeeds) {
  return {Browser(), Hourglass(), [this, eNeeds](const std::function<void()>& oWork) { Pumping(eNeeds, oWork); }};
}

void DataPage::ReportLastError() { ReportError(m_oState->oDatabase->LastError()); }

void DataPage::ReportError(const ZELLib3::Error& oError) {
  if (!HasBrowser()) throw PageLeft{};  // cleaned up by the code that failed
  const std::string sCode = std::to_string(oError.ErrorCode);
  const auto oHelp = Browser().MessageHelp(sCode);
  NoteUnread(sCode + " " + oError.ErrorText, oHelp);
  ShowFailure([&](FrontBoxes& oBoxes) { modZELError::ShowError(oBoxes, oError, "Error", oHelp); });
}

void DataPage::Report(const std::exception& oFailure) {
  if (const auto* pInstanceError = dynamic_cast<const ZELLib3::InstanceError*>(&oFailure)) {
    ReportError(pInstanceError->ErrorObject());
  } else {
    NoteUnread(oFailure.what(), {});
    ShowFailure([&](FrontBoxes& oBoxes) { modZELError::ShowError(oBoxes, oFailure, "Error"); });
  }
}

void DataPage::ShowFailure(const std::function<void(FrontBoxes&)>& oShow) {
  if (!HasBrowser()) throw PageLeft{};  // cleaned up by the code that failed
  if (m_oState->bFilling && m_oState->bUnasked && Document()->all().item("divUnread") != nullptr) return;
  FrontBoxes oBoxes = Boxes(Needs::Document);
  oShow(oBoxes);
}

DataPage::Busy::Busy(DataPage& oPage)
    : m_oPage(std::static_pointer_cast<DataPage>(oPage.shared_from_this())),
      m_oWait(std::make_shared<clsHourglass::Scope>(oPage.Hourglass())) {
  ++oPage.m_oState->lBusy;
}

DataPage::Busy::~Busy() { m_oPage->m_oState->lBusy -= 1; }

bool DataPage::Operate(const std::function<bool()>& oOperation) {
  MessagePump& oPump = Browser().Platform().MessagePump();
  bool bDone = false;
  const bool bRan = Attempt([&] {
    const Busy oBusy(*this);
    Browser().FlushDocuments();
    Pumping(Needs::Page, [&] { oPump.Poll(); });  // lets the screen catch up
    Pumping(Needs::Page, [&] { oPump.RunInBackground([&] { bDone = oOperation(); }); });
  });
  if (bRan && !bDone) ReportLastError();
  return bDone;
}

void DataPage::ReadInBackground(ZELLib3::Database& oDatabase, const std::function<void()>& oPart) {
  if (!HasBrowser()) return oPart();  // cleaned up: there is no loop that could go on meanwhile
  MessagePump& oPump = Browser().Platform().MessagePump();
  bool bStopped = false;
  std::exception_ptr oFailure;
  {
    const Busy oBusy(*this);
    Pumping(Needs::Document, [&] {
      try {
        oPump.RunInBackground(oPart, [&] {
          bStopped = true;
          oDatabase.Interrupt();
        });
      } catch (const WaitError&) {
        throw;
      } catch (...) {
        oFailure = std::current_exception();
      }
    });
  }
  if (bStopped) {
    OnStopped(oFailure);
  } else if (oFailure != nullptr) {
    std::rethrow_exception(oFailure);
  }
}

void DataPage::OnStopped(const std::exception_ptr& oFailure) {
  if (oFailure != nullptr) throw ReadingStopped{oFailure};
  throw ReadingStopped{std::make_exception_ptr(std::runtime_error("The reading was stopped"))};
}

void DataPage::Poll(const std::function<bool()>& oEnough) {
  MessagePump& oPump = Browser().Platform().MessagePump();
  Browser().FlushDocuments();
  const bool bDropped = Browser().DropEvents(false);
  Finally(
      [&] {
        Pumping(Needs::Document, [&] { oPump.Poll(); });
        while (!oEnough() && Browser().IsBehind(WebBrowser())) {
          Pumping(Needs::Document, [&] {
            oPump.Turn();
            oPump.Poll();  // handles what is put off until the program is idle, too
          });
        }
      },
      [&] {
        if (HasBrowser()) Browser().DropEvents(bDropped);
      });
}

const std::shared_ptr<clsHourglass>& DataPage::Hourglass() {
  if (!m_oState->oHourglass)
    m_oState->oHourglass = std::make_shared<clsHourglass>(Browser().Platform().ScreenPointer());
  return m_oState->oHourglass;
}

}  // namespace ZELWbr3
