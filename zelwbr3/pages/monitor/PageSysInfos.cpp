#include "zelwbr3/pages/monitor/PageSysInfos.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/KeyCode.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/pages/monitor/ListLink.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <stdexcept>

namespace ZELWbr3 {

namespace {

/// Writes a view's link: its cell and the element in it have the same id.
void FillLink(Element& oCell, const std::string& sID, const std::string& sName) {
  Element* oLink = oCell.firstElementChild();
  if (oLink == nullptr) throw std::runtime_error("The template row of \"tabSysInfos\" has no link in its first cell");
  oLink->innerText(sName);
  oCell.id(sID);
  oLink->id(sID);
}

}  // namespace

void PageSysInfos::FillContent() {
  const auto oSysInfos = Given(Database()->SysInfos());
  if (!oSysInfos->Refresh()) ReportLastError();
  FillLocale();
  Element& oTemplate = TableRow(RequiredElement("tabSysInfos"), TemplateBelowHeadings);
  const int iCount = oSysInfos->Count();
  for (int i = 1; i <= iCount; ++i) {
    const auto oSysInfo = Given(oSysInfos->Item(i));
    modCells::AddRow(oTemplate, 2, [&](const auto& oCells) {
      FillLink(*oCells[0], ListLink::ID(oSysInfo->Index()), Text::Trim(modCells::Known(oSysInfo->Name())));
      const std::string sDescription = oSysInfo->Description();
      if (sDescription != modCells::MissingText) modCells::SetCellText(*oCells[1], sDescription);
    });
  }
}

bool PageSysInfos::OnClick(const std::string& sID) {
  const auto lIndex = ListLink::Index(sID);
  if (!lIndex) return false;
  m_lIndex = *lIndex;
  CarryOut(CommandOpen);
  return true;
}

bool PageSysInfos::HandleOnKeyDown(Long& lKeyCode, Element* oElement) {
  if (lKeyCode != KeyCode::Enter) return DataPage::HandleOnKeyDown(lKeyCode, oElement);
  if (IgnoresEvents()) return false;
  if (oElement != nullptr) HandleOnClick(oElement->id());
  return true;
}

void PageSysInfos::OnCommand(Long lCommand) {
  if (lCommand != CommandOpen) return;
  Act([this] {
    const auto oSysInfos = Given(Database()->SysInfos());
    auto oSysInfo = ListLink::Find(*oSysInfos, m_lIndex);
    if (oSysInfo == nullptr) oSysInfo = Given(oSysInfos->Item(m_lIndex));
    Browser().ShowSysInfo(Database(), oSysInfo);
  });
}

}  // namespace ZELWbr3
