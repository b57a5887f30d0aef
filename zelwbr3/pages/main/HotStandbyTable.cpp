#include "zelwbr3/pages/main/HotStandbyTable.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modElement.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace ZELWbr3 {

using modElement::ShowElement;

namespace {

std::array<Element*, 3> LabelValueRole(const Element& oRow) {
  const auto oCells = oRow.cells();
  if (oCells.size() < 3) {
    throw std::runtime_error("The row \"" + oRow.id() + "\" of the page file needs cells for label, value and role");
  }
  return {oCells[0], oCells[1], oCells[2]};
}

/// An arrow marks the node on which this instance runs.
const char* LabelClass(bool bArrow) { return bArrow ? "zelTblCellAltArrowLeft" : "zelTblCellAltNoImage"; }

const char* RoleText(Long lRole) {
  switch (lRole) {
    case 1:
      return "Standby";
    case 2:
      return "Master";
    default:
      return " ";
  }
}

bool IsUnknown(const std::string& sName) {
  return std::ranges::equal(sName, std::string_view("UNKNOWN"), {},
                            [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
}

}  // namespace

void HotStandbyTable::Fill(ZELLib3::Database& oDatabase) {
  const bool bShown = oDatabase.HotStandbyRole() != 0;
  ShowElement(&m_oRequired("tabHotStandby"), bShown);
  if (!bShown) return;

  ShowElement(&m_oRequired("rowHotStandbyWarning"), oDatabase.HotStandbyWarning());
  FillOfficial(oDatabase);
  m_oLast = &m_oRequired("rowHotStandbyNode");
  int iNumber = 0;
  for (const auto& oNode : Given(oDatabase.HotStandby())->Nodes()) FillNode(++iNumber, oNode);
}

void HotStandbyTable::FillOfficial(ZELLib3::Database& oDatabase) {
  Element& oRow = m_oRequired("rowHotStandbyOfficial");
  const auto [oLabel, oValue, oRole] = LabelValueRole(oRow);
  oLabel->innerText("Virtual Server Name");
  oLabel->className(LabelClass(oDatabase.HotStandbyRole() == 1));
  oValue->innerText(modCells::Known(Given(oDatabase.HotStandby())->OfficialNode()));
  ShowElement(&oRow, true);
}

void HotStandbyTable::FillNode(int iNumber, const ZELLib3::HotStandby::Node& oNode) {
  const bool bUnknown = IsUnknown(oNode.Name);
  Element& oRow = bUnknown ? UnknownRow() : KnownRow(iNumber);
  const auto [oLabel, oValue, oRole] = LabelValueRole(oRow);
  oLabel->innerText("Node #" + std::to_string(iNumber));
  oLabel->className(LabelClass(oNode.Own));
  if (!bUnknown) oValue->innerText(Text::Isolated(oNode.Name) + " (" + Text::Isolated(oNode.StateText) + ")");
  oRole->innerText(RoleText(oNode.Role));
  ShowElement(&oRow, true);
  m_oLast = &oRow;
}

Element& HotStandbyTable::KnownRow(int iNumber) {
  const std::string sID = "rowHotStandbyNode" + std::to_string(iNumber);
  if (Element* oRow = m_oDocument.all().item(sID)) return *oRow;
  Element& oRow = Copy(m_oRequired("rowHotStandbyNode"));
  oRow.id(sID);
  return oRow;
}

Element& HotStandbyTable::UnknownRow() {
  Element& oRow = m_oRequired("rowHotStandbyNodeUnknown");
  return std::exchange(m_bUnknownUsed, true) ? Copy(oRow) : oRow;
}

Element& HotStandbyTable::Copy(Element& oTemplate) { return m_oLast->after(oTemplate.cloneNode(true)); }

}  // namespace ZELWbr3
