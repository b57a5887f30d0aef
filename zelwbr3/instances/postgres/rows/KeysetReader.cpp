#include "zelwbr3/instances/postgres/rows/KeysetReader.h"

#include "zelwbr3/instances/postgres/connection/Queries.h"

#include <utility>

namespace ZELWbr3::Postgres {

using Instances::RowBlock;

TableKey TableKey::Of(Connection& oConnection, const std::string& sRelation) {
  const Result o = oConnection.Execute(Queries::SQL("key"), "looking for a key", {sRelation});
  TableKey oKey;
  for (int i = 0; i < o.Rows(); ++i) {
    oKey.Columns.push_back("r." + o.Text(i, "name"));
    oKey.Types.push_back(o.Text(i, "type"));
  }
  return oKey;
}

std::string TableKey::List() const {
  std::string sList;
  for (const std::string& sColumn : Columns) sList += (sList.empty() ? "" : ", ") + sColumn;
  return sList;
}

std::string TableKey::After() const {
  std::string sList;
  for (std::size_t i = 0; i < Types.size(); ++i) {
    sList += (i == 0 ? "$" : ", $") + std::to_string(i + 1) + "::" + Types[i];
  }
  return "(" + List() + ") > (" + sList + ")";
}

bool KeysetReader::Continue(Connection& oConnection, RowBlock& oBlock) {
  // Taken out, so that after a failure the rows are read again.
  std::deque<Row> ahead = std::exchange(m_ahead, {});
  m_read = m_delivered;
  bool bEnd = false;
  for (;;) {
    for (; !ahead.empty() && !oBlock.IsFull(); ahead.pop_front()) {
      m_read = std::move(ahead.front().Key);
      oBlock.Add(std::move(ahead.front().Texts));
    }
    if (!ahead.empty()) break;
    if (bEnd) return false;
    if (oBlock.IsFull()) break;
    bEnd = ReadAhead(oConnection, ahead);
  }
  m_ahead = std::move(ahead);
  return true;
}

/// Answers whether these are the last rows.
bool KeysetReader::ReadAhead(Connection& oConnection, std::deque<Row>& ahead) {
  const std::size_t lRows = m_lBlocks * RowBlock::MaxRows + 1;
  m_lBlocks = MostBlocks;
  const std::string sOrder = m_oKey.IsStoredOrder ? "" : " ORDER BY " + m_oKey.List();
  std::size_t lBytes = 0;
  bool bMore = false;
  try {
    ReadRows(oConnection, lRows, m_oKey.Columns, (m_read.empty() ? "" : " WHERE " + m_oKey.After()) + sOrder, m_read,
             [&](Instances::RowTexts oRow, const Result& oResult) {
               // The row that is too much says that there are more.
               bMore = lBytes >= RowBlock::MaxBytes;
               if (bMore) return false;
               Row oAhead{std::move(oRow), {}};
               for (std::size_t i = 0; i < m_oKey.Columns.size(); ++i) {
                 oAhead.Key.emplace_back(oResult.Text(0, static_cast<int>(i)));
               }
               for (const std::string& sText : oAhead.Texts) lBytes += sText.size();
               ahead.push_back(std::move(oAhead));
               return true;
             });
  } catch (const ConnectionLost&) {
    throw;
  } catch (const ServerError&) {
    // The rows before it come first; reading on from them fails again.
    if (ahead.empty()) throw;
    return false;
  }
  return ahead.size() < lRows && !bMore;
}

void KeysetReader::Pause() {
  m_ahead.clear();
  m_lBlocks = 1;
}

}  // namespace ZELWbr3::Postgres
