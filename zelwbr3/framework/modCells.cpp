#include "zelwbr3/framework/modCells.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/framework/modFormat.h"

#include <array>
#include <stdexcept>

namespace ZELWbr3::modCells {

Element& AddRowFromTemplate(Element& oSection, Element& oTemplate) {
  Element& oRow = oSection.appendChild(oTemplate.cloneNode(true));
  modElement::ShowElement(&oRow, true);
  return oRow;
}

namespace {

std::vector<Element*> CellsOf(const Element& oRow, std::size_t iCells) {
  std::vector<Element*> oCells = oRow.cells();
  if (oCells.size() < iCells) {
    throw std::runtime_error("The template row \"" + oRow.id() + "\" has " + std::to_string(oCells.size()) +
                             " cells instead of " + std::to_string(iCells));
  }
  return oCells;
}

}  // namespace

std::vector<Element*> AddRowCells(Element& oTemplate, std::size_t iCells) {
  return CellsOf(AddRowFromTemplate(*oTemplate.parentElement(), oTemplate), iCells);
}

void AddRow(Element& oTemplate, std::span<const std::string> texts) {
  oTemplate.parentElement()->appendRow(oTemplate, texts);
}

void AddRow(Element& oTemplate, std::size_t iCells, const std::function<void(const std::vector<Element*>&)>& oWrite) {
  oTemplate.parentElement()->appendRow(oTemplate, [&](Element& oRow) { oWrite(CellsOf(oRow, iCells)); });
}

void SetCellText(Element& oCell, std::string_view sText) { SetCellTextExcept(oCell, sText, MissingText); }

void SetCellTextExcept(Element& oCell, std::string_view sText, std::string_view sExcept) {
  oCell.innerText(CellText(sText == sExcept ? std::string_view() : sText));
}

std::string FormatCounter(double dCounter, const UserLocale& oLocale) {
  return dCounter == -1 ? std::string() : modFormat::Number(dCounter, 0, oLocale);
}

std::string FormatPercent(float fPercent, const UserLocale& oLocale) {
  return modFormat::Fixed(fPercent, 2, oLocale) + "%";
}

float Percentage(float fWhole, float fPart) { return fWhole > 0 ? fPart * 100 / fWhole : 100; }

void FillParamCell(Element& oCell, std::string_view sName, Long lGroup) {
  static constexpr std::array<const char*, 4> Classes = {"zelTblCellParGen", "zelTblCellParExt", "zelTblCellParSup",
                                                         "zelTblCellParInf"};
  const bool bKnown = lGroup >= 0 && lGroup < static_cast<int>(Classes.size());
  const std::string sTrimmed = Text::Trim(Known(sName));
  oCell.className(bKnown ? Classes[static_cast<std::size_t>(lGroup)] : "zelTblCellParNon");
  oCell.innerText(sTrimmed);
  oCell.id("PARAM" + sTrimmed);
  if (sTrimmed.empty()) oCell.removeAttribute("tabindex");
}

bool AfterPrefix(std::string_view sPrefix, std::string_view sID, std::string& sRest) {
  if (!sID.starts_with(sPrefix)) return false;
  sRest = sID.substr(sPrefix.size());
  return true;
}

}  // namespace ZELWbr3::modCells
