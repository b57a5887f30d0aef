#include "zelwbr3/instances/sqlite/rows/CursorReader.h"

#include <utility>

namespace ZELWbr3::SQLite {

CursorReader::CursorReader(Connection& oConnection, const std::string& sSQL, std::string sAsked)
    : m_sSQL(sSQL + " LIMIT ?1 OFFSET ?2"), m_sAsked(std::move(sAsked)) {
  m_oColumns = ColumnsOf(oConnection.Prepare(m_sSQL, m_sAsked), 0);
}

bool CursorReader::Read(Connection& oConnection, Instances::RowBlock& oBlock) {
  bool bMore = false;
  if (!m_bFlowing) {
    // One more than fits, to tell whether there are more.
    Statement oStatement = Continue(oConnection, Instances::RowBlock::MaxRows + 1);
    bMore = oStatement.Step() && Fill(oStatement, oBlock);
  } else {
    // Taken out, so that a failure ends it.
    Connection::Cursor oOpen = std::exchange(m_oOpen, nullptr);
    if (oOpen != nullptr && oOpen->has_value()) {
      oConnection.AllowTime();
      bMore = Fill(**oOpen, oBlock);
    } else {
      oOpen = oConnection.KeepOpen(Continue(oConnection, -1));
      bMore = (*oOpen)->Step() && Fill(**oOpen, oBlock);
    }
    if (bMore && !oConnection.IsAwaited()) m_oOpen = std::move(oOpen);
  }
  m_lRead += static_cast<std::int64_t>(oBlock.Rows().size());
  m_bFlowing = true;
  return bMore;
}

void CursorReader::Pause() {
  m_oOpen.reset();
  m_bFlowing = false;
}

Statement CursorReader::Continue(Connection& oConnection, std::int64_t lLimit) const {
  Statement oStatement = oConnection.Prepare(m_sSQL, m_sAsked);
  oStatement.BindNumber(1, lLimit);
  oStatement.BindNumber(2, m_lRead);
  return oStatement;
}

bool CursorReader::Fill(Statement& oStatement, Instances::RowBlock& oBlock) {
  do {
    oBlock.Add(RowOf(oStatement, 0, m_sAsked));
    if (!oStatement.Step()) return false;
  } while (!oBlock.IsFull());
  return true;
}

}  // namespace ZELWbr3::SQLite
