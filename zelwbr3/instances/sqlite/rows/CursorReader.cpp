#include "zelwbr3/instances/sqlite/rows/CursorReader.h"

#include <sqlite3.h>

#include <utility>

namespace ZELWbr3::SQLite {

CursorReader::CursorReader(Connection& oConnection, std::string sSQL, std::string sAsked, std::int64_t lFirst)
    : m_sSQL(std::move(sSQL)), m_sAsked(std::move(sAsked)), m_lRead(lFirst) {
  m_oColumns = ColumnsOf(oConnection.Prepare(m_sSQL, m_sAsked), 0);
}

bool CursorReader::Continue(Connection& oConnection, Instances::RowBlock& oBlock) {
  const std::int64_t lRow = m_lRead + static_cast<std::int64_t>(oBlock.Rows().size());
  if (!m_bFlowing) {
    // One more than fits, to tell whether there are more.
    Statement oStatement = StatementFrom(oConnection, m_sSQL, lRow, Instances::RowBlock::MaxRows + 1);
    return oStatement.Step() && Fill(oStatement, oBlock);
  }
  // Taken out, so that a failure ends it.
  Connection::Cursor oOpen = std::exchange(m_oOpen, nullptr);
  bool bMore = oOpen != nullptr && oOpen->has_value();
  if (!bMore) {
    oOpen = oConnection.KeepOpen(StatementFrom(oConnection, m_sSQL, lRow, -1));
    bMore = (*oOpen)->Step();
  }
  bMore = bMore && Fill(**oOpen, oBlock);
  if (bMore && !oConnection.IsAwaited()) m_oOpen = std::move(oOpen);
  return bMore;
}

void CursorReader::Deliver(const Instances::RowBlock& oBlock) {
  m_lRead += static_cast<std::int64_t>(oBlock.Rows().size());
  m_bFlowing = true;
}

void CursorReader::Pause() {
  m_oOpen.reset();
  m_bFlowing = false;
}

Statement CursorReader::StatementFrom(Connection& oConnection, const std::string& sSQL, std::int64_t lRow,
                                      std::int64_t lLimit) const {
  Statement oStatement = oConnection.Prepare(sSQL + " LIMIT ?1 OFFSET ?2", m_sAsked);
  oStatement.BindNumber(1, lLimit);
  oStatement.BindNumber(2, lRow);
  return oStatement;
}

bool CursorReader::Fill(Statement& oStatement, Instances::RowBlock& oBlock) {
  while (!oBlock.IsFull()) {
    oBlock.Add(RowOf(oStatement, 0, m_sAsked));
    if (!oStatement.Step()) return false;
  }
  return true;
}

Instances::RowTexts CursorReader::LongRow(Connection& oConnection, std::size_t lInBlock) {
  // Columns need not have names by which they could be selected.
  std::string sNames;
  for (std::size_t i = 0; i < m_oColumns.size(); ++i) sNames += (i == 0 ? "c" : ", c") + std::to_string(i);
  const std::string sSelect = "WITH list(" + sNames + ") AS (" + m_sSQL + ") SELECT ";
  const auto AskFor = [&](const std::string& sExpression) {
    Statement oStatement = StatementFrom(oConnection, sSelect + sExpression + " FROM list",
                                         m_lRead + static_cast<std::int64_t>(lInBlock), 1);
    // None is there: what is too long is not a value of the row.
    if (!oStatement.Step()) RaiseError(SQLITE_TOOBIG, m_sAsked, "a value is too long");
    return oStatement;
  };
  Instances::RowTexts oRow;
  for (std::size_t i = 0; i < m_oColumns.size(); ++i) oRow.push_back(LongCell("c" + std::to_string(i), AskFor));
  return oRow;
}

}  // namespace ZELWbr3::SQLite
