#include "zelwbr3/pages/monitor/BlockTable.h"

#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/pages/monitor/TableRow.h"

#include <algorithm>
#include <stdexcept>

namespace ZELWbr3 {

namespace {

constexpr const char* HeadingClass = "zelTblColHdrStd";
constexpr const char* CellClass = "zelTblCellStd";
constexpr const char* LastCellClass = "zelTblCellStdLast";

/// The cell that the row's other cells are copies of.
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
  if (sTitle != MissingText) oCell.title(sTitle);
}

void SetValue(Element& oCell, const std::string& sValue) {
  if (sValue != MissingText) modCells::SetCellTextExcept(oCell, sValue, "");
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
  // The first heading's tooltip must not become that of the others.
  Element& oPlainHeading = oFirstHeading.cloneNode(true);

  const Long lColumns = oRows.ColumnCount();
  for (Long lColumn = 0; lColumn < lColumns; ++lColumn) {
    const bool bFirst = lColumn == 0;
    const bool bLast = lColumn == lColumns - 1;
    Element& oHeading = bFirst ? oFirstHeading : AppendCopy(m_oHeadings, oPlainHeading, HeadingClass);
    SetTooltip(oHeading, oRows.ColumnTitle(lColumn));
    oHeading.innerText(oRows.ColumnName(lColumn));
    if (bLast) oHeading.width("100%");
    if (!bFirst) AppendCopy(m_oTemplate, oFirstCell, bLast ? LastCellClass : CellClass);
  }
}

void BlockTable::AddBlock(ZELLib3::RowSource& oRows) {
  if (m_eView == View::Record) return AddRecord(oRows);
  const Long lColumns = oRows.ColumnCount();
  while (!oRows.EndOfBlock() && oRows.NextRow()) {
    const std::vector<Element*> oCells =
        modCells::AddRowFromTemplate(*m_oTemplate.parentElement(), m_oTemplate).cells();
    const int lShown = std::min<int>(lColumns, static_cast<int>(oCells.size()));
    for (int lColumn = 0; lColumn < lShown; ++lColumn) SetValue(*oCells[lColumn], oRows.Value(lColumn));
  }
}

void BlockTable::AddRecord(ZELLib3::RowSource& oRows) {
  if (!oRows.NextRow()) return;
  const Long lColumns = oRows.ColumnCount();
  for (Long lColumn = 0; lColumn < lColumns; ++lColumn) {
    const std::vector<Element*> oCells =
        modCells::AddRowFromTemplate(*m_oTemplate.parentElement(), m_oTemplate).cells();
    SetTooltip(*oCells[0], oRows.ColumnTitle(lColumn));
    modCells::SetCellTextExcept(*oCells[0], oRows.ColumnName(lColumn), "");
    SetValue(*oCells[1], oRows.Value(lColumn));
  }
}

}  // namespace ZELWbr3
