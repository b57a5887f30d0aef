#include "framework/modCells.h"

#include "dom/Text.h"
#include "framework/modElement.h"
#include "framework/modFormat.h"

#include <array>

namespace ZELWbr3::modCells {

Element& AddRowFromTemplate(Element& oSection, Element& oTemplate) {
  Element& oRow = oSection.appendChild(oTemplate.cloneNode(true));
  modElement::ShowElement(&oRow, true);
  return oRow;
}

void SetCellText(Element& oCell, std::string_view sText) { oCell.innerText(sText.empty() ? " " : sText); }

void SetCellTextExcept(Element& oCell, std::string_view sText, std::string_view sExcept) {
  SetCellText(oCell, sText == sExcept ? std::string_view() : sText);
}

std::string FormatCounter(double dCounter, const UserLocale& oLocale) {
  return dCounter == -1 ? std::string() : modFormat::Number(dCounter, 0, oLocale);
}

std::string FormatPercent(float fPercent, const UserLocale& oLocale) {
  return modFormat::Fixed(fPercent, 2, oLocale) + "%";
}

float Percentage(float fWhole, float fPart) { return fWhole > 0 ? fPart * 100 / fWhole : 100; }

void FillParamCell(Element& oCell, const ZELLib3::Parameter& oParameter) {
  static constexpr std::array<const char*, 4> Classes = {"zelTblCellParGen", "zelTblCellParExt", "zelTblCellParSup",
                                                         "zelTblCellParInf"};
  const Long lGroup = oParameter.Group();
  const bool bKnown = lGroup >= 0 && lGroup < static_cast<int>(Classes.size());
  const std::string sName = Text::Trim(oParameter.Name());
  oCell.className(bKnown ? Classes[static_cast<std::size_t>(lGroup)] : "zelTblCellParNon");
  oCell.innerText(sName);
  oCell.id("PARAM" + sName);
}

bool Behind(std::string_view sPrefix, std::string_view sID, std::string& sRest) {
  if (!sID.starts_with(sPrefix)) return false;
  sRest = sID.substr(sPrefix.size());
  return true;
}

}  // namespace ZELWbr3::modCells
