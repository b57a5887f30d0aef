#include "zelwbr3/pages/monitor/BlockTable.h"

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <stdexcept>

namespace ZELWbr3 {

namespace {

constexpr const char* HeadingClass = "zelTblColHdrStd";
constexpr const char* CellClass = "zelTblCellStd";
constexpr const char* LastCellClass = "zelTblCellStdLast";

/// The cell that is copied for the row's other cells.
Element& FirstCell(const Element& oRow) {
  Element* oCell = oRow.cells(0);
  if (oCell == nullptr) throw std::runtime_error("A heading or template row of the page file has no cell");
  return *oCell;
}

Element& AppendCopy(Element& oRow, Element& oCell, std::string_view sClass) {
  Element& oCopy = oRow.appendChild(oCell.cloneNode(true));
  oCopy.className(sClass);
  return oCopy;
}

void SetTooltip(Element& oCell, const std::string& sTitle) {
  if (sTitle != modCells::MissingText) oCell.title(sTitle);
}

/// A value as the text of its cell; empty for a missing one.
std::string ValueText(const std::string& sValue) {
  return sValue == modCells::MissingText ? "" : modCells::CellText(sValue);
}

}  // namespace

BlockTable::BlockTable(const Element& oTable, const ZELLib3::RowSource& oRows, View eView)
    : m_oHeadings(TableRow(oTable, 0)), m_oTemplate(TableRow(oTable, TemplateBelowHeadings)), m_eView(eView) {
  if (m_eView == View::Record) {
    MakeRecordColumns();
  } else {
    MakeColumns(oRows);
  }
}

void BlockTable::MakeRecordColumns() {
  Element& oName = FirstCell(m_oHeadings);
  oName.innerText("Name");
  Element& oValue = AppendCopy(m_oHeadings, oName, HeadingClass);
  oValue.innerText("Value");
  oValue.width("100%");
  AppendCopy(m_oTemplate, FirstCell(m_oTemplate), CellClass);
}

void BlockTable::MakeColumns(const ZELLib3::RowSource& oRows) {
  Element& oFirstHeading = FirstCell(m_oHeadings);
  Element& oFirstCell = FirstCell(m_oTemplate);
  // The other headings must not get the first heading's tooltip.
  Element& oPlainHeading = oFirstHeading.cloneNode(true);

  const Long lColumns = oRows.ColumnCount();
  for (Long lColumn = 0; lColumn < lColumns; ++lColumn) {
    const bool bFirst = lColumn == 0;
    const bool bLast = lColumn == lColumns - 1;
    Element& oHeading = bFirst ? oFirstHeading : AppendCopy(m_oHeadings, oPlainHeading, HeadingClass);
    SetTooltip(oHeading, oRows.ColumnTitle(lColumn));
    oHeading.innerText(modCells::Known(oRows.ColumnName(lColumn)));
    if (bLast) oHeading.width("100%");
    if (!bFirst) AppendCopy(m_oTemplate, oFirstCell, bLast ? LastCellClass : CellClass);
  }
}

void BlockTable::AddBlock(ZELLib3::RowSource& oRows) {
  if (m_eView == View::Record) return AddRecord(oRows);
  const int iColumns = oRows.ColumnCount();
  std::vector<std::string> texts;
  while (!oRows.EndOfBlock() && oRows.NextRow()) {
    texts.clear();
    for (int iColumn = 0; iColumn < iColumns; ++iColumn) texts.push_back(ValueText(oRows.Value(iColumn)));
    modCells::AddRow(m_oTemplate, texts);
  }
}

void BlockTable::AddRecord(ZELLib3::RowSource& oRows) {
  if (!oRows.NextRow()) return;
  const Long lColumns = oRows.ColumnCount();
  for (Long lColumn = 0; lColumn < lColumns; ++lColumn) {
    modCells::AddRow(m_oTemplate, 2, [&](const auto& oCells) {
      SetTooltip(*oCells[0], oRows.ColumnTitle(lColumn));
      modCells::SetCellText(*oCells[0], oRows.ColumnName(lColumn));
      if (const std::string sText = ValueText(oRows.Value(lColumn)); !sText.empty()) oCells[1]->innerText(sText);
    });
  }
}

}  // namespace ZELWbr3
