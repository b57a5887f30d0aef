#include "instances/sqlite/WindowFeed.h"

#include "instances/sqlite/Connection.h"

#include <algorithm>

namespace ZELWbr3::SQLite {

namespace {

constexpr std::int64_t kFirstWindow = 1000;
/// A window that reaches it ends, whatever its rows: they are copied to disk
/// while the user waits.
constexpr std::int64_t kWindowBytes = std::int64_t{64} << 20;

}  // namespace

WindowFeed::WindowFeed(Connection& oConnection, const std::string& sSQL, std::string sAsked)
    : m_sSQL(sSQL + " LIMIT ?1 OFFSET ?2"), m_sAsked(std::move(sAsked)) {
  m_oColumns = ColumnsOf(oConnection.Prepare(m_sSQL, m_sAsked), 0);
}

bool WindowFeed::Read(Connection& oConnection, RowBlock& oBlock) {
  while (!oBlock.IsFull()) {
    if (!m_oWindow || m_oWindow->Rows() == 0) {
      if (!m_bMore) return false;
      Fetch(oConnection);
      if (m_oWindow->Rows() == 0) return false;
    }
    oBlock.Add(m_oWindow->Read());
  }
  return m_oWindow->Rows() > 0 || m_bMore;
}

void WindowFeed::Fetch(Connection& oConnection) {
  Statement oStatement = oConnection.Prepare(m_sSQL, m_sAsked);
  const std::int64_t lRows = std::max(kFirstWindow, m_lFetched / 2);
  oStatement.BindNumber(1, lRows + 1);  // the last one only tells that there are more
  oStatement.BindNumber(2, m_lFetched);
  Spool oWindow;
  bool bMore = false;
  while (oStatement.Step()) {
    bMore = oWindow.Rows() == lRows || oWindow.Bytes() >= kWindowBytes;
    if (bMore) break;
    oWindow.Write(RowOf(oStatement, 0, m_sAsked));
  }
  m_lFetched += oWindow.Rows();
  m_bMore = bMore;
  m_oWindow = std::move(oWindow);
}

}  // namespace ZELWbr3::SQLite
