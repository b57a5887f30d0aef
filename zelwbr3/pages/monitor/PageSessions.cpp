#include "zelwbr3/pages/monitor/PageSessions.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/pages/monitor/ListLink.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <array>

namespace ZELWbr3 {

void PageSessions::FillContent() {
  const auto oSessions = Given(Database()->Sessions());
  if (!oSessions->Refresh()) ReportLastError();
  FillLocale();
  Element& oTemplate = TableRow(RequiredElement("tabSessions"), TemplateBelowHeadings);
  const int iCount = oSessions->Count();
  for (int i = 1; i <= iCount; ++i) {
    const auto oSession = Given(oSessions->Item(i));
    const std::array<std::string, 5> fields = {oSession->Field1(), oSession->Field2(), oSession->Field3(),
                                               oSession->Field4(), oSession->Field5()};
    modCells::AddRow(oTemplate, 1 + fields.size(), [&](const auto& oCells) {
      oCells[0]->innerText(Text::Trim(oSession->Name()));
      oCells[0]->id(ListLink::ID(oSession->Index()));
      for (std::size_t iField = 0; iField < fields.size(); ++iField) {
        modCells::SetCellTextExcept(*oCells[1 + iField], fields[iField], "");
      }
      // For the page's script.
      Element& oRow = *oCells[0]->parentElement();
      if (const auto oActive = oSession->IsActive()) oRow.setAttribute("data-zel-state", *oActive ? "active" : "idle");
      if (const std::string sDetail = oSession->Detail(); !sDetail.empty())
        oRow.setAttribute("data-zel-detail", sDetail);
    });
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
  // Selects the session and shows nothing yet: a session has no page of its own.
  if (lCommand == CommandSelect) ListLink::Find(*Given(Database()->Sessions()), m_lIndex);
}

}  // namespace ZELWbr3
