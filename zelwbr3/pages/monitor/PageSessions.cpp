#include "zelwbr3/pages/monitor/PageSessions.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/pages/monitor/ListLink.h"
#include "zelwbr3/pages/monitor/TableRow.h"

namespace ZELWbr3 {

void PageSessions::FillContent() {
  const auto oSessions = Database()->Sessions();
  if (!oSessions->Refresh()) ReportLastError();
  FillLocale();
  Element& oTemplate = TableRow(RequiredElement("tabSessions"), TemplateBelowHeadings);
  const int iCount = oSessions->Count();
  for (int i = 1; i <= iCount; ++i) {
    const auto oSession = oSessions->Item(i);
    const auto oCells = modCells::AddRowCells(oTemplate, 6);
    oCells[0]->innerText(Text::Trim(oSession->Name()));
    oCells[0]->id(ListLink::ID(oSession->Index()));
    modCells::SetCellTextExcept(*oCells[1], oSession->Field1(), "");
    modCells::SetCellTextExcept(*oCells[2], oSession->Field2(), "");
    modCells::SetCellTextExcept(*oCells[3], oSession->Field3(), "");
    modCells::SetCellTextExcept(*oCells[4], oSession->Field4(), "");
    modCells::SetCellTextExcept(*oCells[5], oSession->Field5(), "");
  }
  SetText("txtFormFooter", "Rows " + std::to_string(iCount) + " / " + std::to_string(iCount));
}

bool PageSessions::OnClick(const std::string& sID) {
  const auto lIndex = ListLink::Index(sID);
  if (!lIndex) return false;
  m_lIndex = *lIndex;
  CarryOut(CommandSelect);
  return true;
}

void PageSessions::OnCommand(Long lCommand) {
  // Selects the session and shows nothing: the place for what a session's own
  // page will do.
  if (lCommand == CommandSelect) ListLink::Find(*Database()->Sessions(), m_lIndex);
}

}  // namespace ZELWbr3
