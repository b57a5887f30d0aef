#include "zelwbr3/instances/postgres/rows/StatementReader.h"

namespace ZELWbr3::Postgres {

using Instances::RowBlock;

StatementReader::StatementReader(CellColumns oCells, std::string sFrom, std::string sAsked)
    : m_oCells(std::move(oCells)), m_sFrom(std::move(sFrom)), m_sAsked(std::move(sAsked)) {
  m_oColumns = m_oCells.Headings();
}

bool StatementReader::Read(Connection& oConnection, RowBlock& oBlock) {
  bool bMore = true;
  try {
    bMore = Continue(oConnection, oBlock);
  } catch (const ConnectionLost&) {
    throw;  // and the whole block is read again with another one
  } catch (const ServerError&) {
    // What is in the block is shown first; the next one says what is wrong.
    if (oBlock.Rows().empty()) throw;
  }
  Deliver(oBlock);
  return bMore;
}

bool StatementReader::ReadBlock(Connection& oConnection, RowBlock& oBlock, const std::vector<std::string>& keys,
                                const std::string& sClause, const Connection::Parameters& parameters,
                                const Connection::RowTaker& oTaken) {
  const std::string sLimit = " LIMIT " + std::to_string(RowBlock::MaxRows + 1);
  bool bMore = false;
  oConnection.Stream(m_oCells.SelectBlock(keys, m_sFrom + sClause + sLimit), m_sAsked, parameters,
                     [&](const Result& oPart) {
                       if (oPart.Rows() == 0 || bMore) return;
                       bMore = oBlock.IsFull() || !CellColumns::HasValues(oPart);
                       if (bMore) return;
                       oBlock.Add(m_oCells.RowOf(oPart, static_cast<int>(keys.size())));
                       oTaken(oPart);
                     });
  return bMore;
}

}  // namespace ZELWbr3::Postgres
