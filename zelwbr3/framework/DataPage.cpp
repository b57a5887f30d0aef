#include "zelwbr3/framework/DataPage.h"

#include "zelwbr3/framework/KeyCode.h"
#include "zelwbr3/framework/modCmdEnum.h"
#include "zelwbr3/framework/modZELError.h"

#include <stdexcept>

namespace ZELWbr3 {

namespace {

/// Ends what a page was doing when it has been left: passes Guarded, as any
/// wait that cannot end, and ends where the page was called.
class PageLeft : public WaitError {
 public:
  using WaitError::WaitError;
};

}  // namespace

void DataPage::Commandlist(std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist) {
  m_oItemClick.Disconnect();
  m_oCL = std::move(oCommandlist);
  if (m_oCL == nullptr) return;
  m_oItemClick = m_oCL->ItemClick.Connect([this](Long lPageType, const ZELCmd3::CommandItem& oItem) {
    const auto oSelf = weak_from_this().lock();  // what the click does may clean the control up
    if (lPageType == PageType()) oCL_ItemClick(oItem);
  });
}

void DataPage::Show(std::shared_ptr<ZELLib3::Database> oDatabase) {
  m_oDatabase = std::move(oDatabase);
  Show();
}

void DataPage::Hide() {
  Page::Hide();
  m_oForm.CleanUp();
  m_oDatabase.reset();
}

void DataPage::CleanUp() {
  if (m_oCL != nullptr) m_oCL->Reset(PageType());
  Commandlist(nullptr);
  m_oDatabase.reset();
  m_oForm.CleanUp();
  m_oHourglass.reset();
  Page::CleanUp();
}

void DataPage::Fill() {
  clsHourglass::Scope oWait(Hourglass());
  m_oForm.Init(Document());
  Handle([this] {
    if (m_oDatabase == nullptr) throw std::logic_error("The page " + Name() + " has no instance to show");
    FillContent();
  });
  m_oForm.ShowContent(ShowsFooter());
}

void DataPage::Command(Long lCommand) {
  switch (lCommand) {
    case CommandRefresh:
      BeginReload();
      Browser().Refresh(WebBrowser());
      break;
    case CommandClose:
      Close();
      break;
    default:
      const auto oSelf = shared_from_this();
      Guarded([&] { OnCommand(lCommand); });
      // A command that the host gives is no document event, at whose end what
      // was written is sent.
      if (HasBrowser()) Browser().FlushDocuments();
  }
}

void DataPage::Close() { Browser().ShowOnTop(PageSite::zelWebBrowserMain); }

void DataPage::CloseDetail() {
  const bool bWork = Browser().HasPage(PageSite::zelWebBrowserWork);
  Browser().ShowOnTop(bWork ? PageSite::zelWebBrowserWork : PageSite::zelWebBrowserMain);
}

bool DataPage::HandleOnClick(const std::string& sID) {
  if (IgnoresEvents()) return false;
  bool bHandled = false;
  Handle([&] {
    if (sID == "btnFormClose") {
      bHandled = true;
      Command(CommandClose);
    } else if (const auto lCommand = modCmdEnum::LinkedCommand(sID)) {
      bHandled = true;
      Browser().RaiseCommand(*lCommand);
    } else {
      bHandled = OnClick(sID);
    }
  });
  return bHandled;
}

bool DataPage::HandleOnKeyDown(Long& lKeyCode, Element*) {
  if (IgnoresEvents() || (lKeyCode != KeyCode::Escape && lKeyCode != KeyCode::F5)) return false;
  Handle([&] { Command(lKeyCode == KeyCode::Escape ? CommandClose : CommandRefresh); });
  return true;
}

void DataPage::oCL_ItemClick(const ZELCmd3::CommandItem& oItem) {
  if (IgnoresEvents()) return;
  Handle([&] { Command(oItem.Key); });
}

void DataPage::SetText(std::string_view sID, std::string_view sText) { RequiredElement(sID).innerText(sText); }

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
  const auto SetIfPresent = [this](std::string_view sID, std::string_view sText) {
    if (Element* oElement = Document()->all().item(sID)) oElement->innerText(sText);
  };
  SetIfPresent("LocaleDecimalSymbole", Browser().LocaleDecimalSymbole());
  SetIfPresent("LocaleDecimalPlaces", std::to_string(Browser().LocaleDecimalPlaces()));
  SetIfPresent("LocaleThousendGroupingSymbole", Browser().LocaleThousendGroupingSymbole());
}

void DataPage::ReportLastError() { ReportError(m_oDatabase->LastError()); }

void DataPage::ReportError(const ZELLib3::Error& oError) {
  ShowFailure([&](FrontBoxes& oBoxes) {
    modZELError::ShowError(oBoxes, oError, "Error", Browser().MessageHelp(std::to_string(oError.ErrorCode)));
  });
}

void DataPage::ShowFailure(const std::function<void(FrontBoxes&)>& oShow) {
  if (!HasBrowser()) return;  // cleaned up by what has just failed
  const auto oDocument = Document();
  FrontBoxes oBoxes = Boxes();
  oShow(oBoxes);
  // A box pumps messages: the host may have hidden the page meanwhile, and
  // whatever ran into the failure has nothing left to work on.
  if (Document() != oDocument) throw PageLeft("The page " + Name() + " was left while an error was displayed");
}

DataPage::Busy::Busy(DataPage& oPage)
    : m_oPage(std::static_pointer_cast<DataPage>(oPage.shared_from_this())), m_oWait(oPage.Hourglass()) {
  ++oPage.m_lBusy;
  try {
    oPage.Browser().FlushDocuments();
    oPage.Browser().Platform().MessagePump().Poll();
    if (!oPage.HasBrowser()) throw PageLeft("The page " + oPage.Name() + " was left before it began to work");
  } catch (...) {
    oPage.m_lBusy -= 1;
    throw;
  }
}

DataPage::Busy::~Busy() { m_oPage->m_lBusy -= 1; }

bool DataPage::Operate(const std::function<bool()>& oOperation) {
  const Busy oBusy(*this);
  bool bDone = false;
  Browser().Platform().MessagePump().RunInBackground([&] { bDone = oOperation(); });
  if (!HasBrowser()) throw PageLeft("The page " + Name() + " was left while the instance was at work");
  return bDone;
}

void DataPage::AwaitInstance() {
  const auto oSelf = shared_from_this();
  const auto oDocument = Document();
  Browser().Platform().MessagePump().AwaitBackground();
  if (Document() != oDocument) throw PageLeft("The page " + Name() + " was left while the instance was at work");
}

void DataPage::Handle(const std::function<void()>& oWork) {
  try {
    Guarded(oWork);
  } catch (const PageLeft&) {
    // Whoever took the page away knows.
  }
}

bool DataPage::Guarded(const std::function<void()>& oWork) {
  if (HasBrowser()) AwaitInstance();
  try {
    oWork();
    return true;
  } catch (const WaitError&) {
    throw;
  } catch (const ZELLib3::InstanceError& oError) {
    ReportError(oError.ErrorObject());
  } catch (const std::exception& oError) {
    ShowFailure([&](FrontBoxes& oBoxes) { modZELError::ShowError(oBoxes, oError, "Error"); });
  }
  return false;
}

void DataPage::Act(const std::function<void()>& oAction) {
  clsHourglass::Scope oWait(Hourglass());
  Browser().RaiseActionBegin();
  // What is done may clean the page up.
  const auto Complete = [this] {
    if (HasBrowser()) Browser().RaiseActionComplete(false);
  };
  try {
    Guarded(oAction);
  } catch (...) {
    Complete();
    throw;
  }
  Complete();
}

const std::shared_ptr<clsHourglass>& DataPage::Hourglass() {
  if (!m_oHourglass) m_oHourglass = std::make_shared<clsHourglass>(Browser().Platform().ScreenPointer());
  return m_oHourglass;
}

}  // namespace ZELWbr3
