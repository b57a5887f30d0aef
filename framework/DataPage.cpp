#include "framework/DataPage.h"

#include "framework/KeyCode.h"
#include "framework/modCmdEnum.h"
#include "framework/modZELError.h"

#include <stdexcept>

namespace ZELWbr3 {

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
  Guarded([this] {
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
      OnCommand(lCommand);
  }
}

void DataPage::Close() { Browser().ShowOnTop(PageSite::zelWebBrowserMain); }

bool DataPage::HandleOnClick(const std::string& sID) {
  if (NoEvents()) return false;
  bool bHandled = false;
  Guarded([&] {
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
  if (NoEvents() || (lKeyCode != KeyCode::Escape && lKeyCode != KeyCode::F5)) return false;
  Guarded([&] { Command(lKeyCode == KeyCode::Escape ? CommandClose : CommandRefresh); });
  return true;
}

void DataPage::oCL_ItemClick(const ZELCmd3::CommandItem& oItem) {
  if (NoEvents()) return;
  Guarded([&] { Command(oItem.Key); });
}

void DataPage::SetText(std::string_view sID, std::string_view sText) { RequiredElement(sID).innerText(sText); }

Element& DataPage::RequiredElement(std::string_view sID) const {
  Element* oElement = Document() == nullptr ? nullptr : Document()->all().item(sID);
  if (oElement == nullptr) {
    throw std::runtime_error("The page file " + Name() + ".htm has no element \"" + std::string(sID) + "\"");
  }
  return *oElement;
}

void DataPage::ReportLastError() { ReportError(m_oDatabase->LastError()); }

void DataPage::ReportError(const ZELLib3::Error& oError) {
  InFront([&](MessageBox& oBox) { modZELError::ShowError(oBox, oError, "Error"); });
}

bool DataPage::Guarded(const std::function<void()>& oWork) {
  try {
    oWork();
    return true;
  } catch (const WaitError&) {
    throw;
  } catch (const ZELLib3::InstanceError& oError) {
    ReportError(oError.ErrorObject());
  } catch (const std::exception& oError) {
    InFront([&](MessageBox& oBox) { modZELError::ShowError(oBox, oError, "Error"); });
  }
  return false;
}

void DataPage::InFront(const std::function<void(MessageBox&)>& oShow) {
  if (!HasBrowser()) return;  // cleaned up by what has just failed
  Browser().FlushDocuments();
  const auto oHourglass = Hourglass();
  oHourglass->Break();
  oShow(Browser().Platform().MessageBox());
  oHourglass->Continue();
}

const std::shared_ptr<clsHourglass>& DataPage::Hourglass() {
  if (!m_oHourglass) m_oHourglass = std::make_shared<clsHourglass>(Browser().Platform().ScreenPointer());
  return m_oHourglass;
}

}  // namespace ZELWbr3
