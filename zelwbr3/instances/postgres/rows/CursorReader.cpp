#include "zelwbr3/instances/postgres/rows/CursorReader.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Postgres {

using Instances::RowBlock;

std::unique_ptr<CursorReader> CursorReader::Of(Connection& oConnection, const std::string& sSQL,
                                               const std::string& sAsked) {
  const std::string sFrom = "FROM (" + sSQL + ") AS r";
  return std::make_unique<CursorReader>(CellColumns(oConnection.Execute("SELECT * " + sFrom + " LIMIT 0", sAsked)),
                                        sFrom, sAsked);
}

bool CursorReader::Continue(Connection& oConnection, RowBlock& oBlock) {
  // Of most lists nobody wants to see more than the beginning.
  if (m_lDelivered > 0) return Flow(oConnection, oBlock);
  bool bMore = false;
  ReadRows(oConnection, RowBlock::MaxRows + 1, {}, "", {}, [&](Instances::RowTexts oRow, const Result&) {
    bMore = oBlock.IsFull();
    if (!bMore) oBlock.Add(std::move(oRow));
    return !bMore;
  });
  return bMore;
}

bool CursorReader::Flow(Connection& oConnection, RowBlock& oBlock) {
  // Taken out, so that a failure ends it.
  Cursor oCursor = std::exchange(m_oCursor, nullptr);
  std::deque<Instances::RowTexts> ahead = std::exchange(m_ahead, {});
  if (oCursor == nullptr || !oCursor->IsOpen()) {
    ahead.clear();
    oCursor = std::make_unique<Connection::Cursor>(oConnection, Cells().Select({}, From() + Offset()), Asked());
  }
  bool bEnd = false;
  for (;;) {
    for (; !ahead.empty() && !oBlock.IsFull(); ahead.pop_front()) oBlock.Add(std::move(ahead.front()));
    if (!ahead.empty()) break;
    if (bEnd) return false;
    // One more than fits, to tell whether there are more.
    const std::size_t lRows = m_lInBlock + 1 - std::min(m_lInBlock, oBlock.Rows().size());
    std::size_t lRead = 0;
    oCursor->Fetch(lRows, [&](const Result& oPart) {
      if (oPart.Rows() == 0) return true;
      ++lRead;
      Instances::RowTexts oRow = Cells().RowOf(oPart, 0);
      if (oBlock.IsFull()) {
        ahead.push_back(std::move(oRow));
      } else {
        oBlock.Add(std::move(oRow));
      }
      return true;
    });
    bEnd = lRead < lRows;
  }
  m_oCursor = std::move(oCursor);
  m_ahead = std::move(ahead);
  return true;
}

void CursorReader::Deliver(const RowBlock& oBlock) {
  m_lDelivered += oBlock.Rows().size();
  // Rows are fetched by what fitted into the last block: those of a table are often
  // of the same size.
  m_lInBlock = std::max<std::size_t>(1, oBlock.Rows().size());
}

void CursorReader::Pause() {
  m_oCursor.reset();
  m_ahead.clear();
}

}  // namespace ZELWbr3::Postgres
