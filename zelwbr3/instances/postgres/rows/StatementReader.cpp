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

void StatementReader::ReadRows(Connection& oConnection, std::size_t lRows, const std::vector<std::string>& keys,
                               const std::string& sClause, const Connection::Parameters& parameters,
                               const RowTaker& oTake) {
  const std::string sRows = m_sFrom + sClause + " LIMIT " + std::to_string(lRows);
  oConnection.Stream(m_oCells.Select(keys, sRows), m_sAsked, parameters, [&](const Result& oPart) {
    return oPart.Rows() == 0 || oTake(m_oCells.RowOf(oPart, static_cast<int>(keys.size())), oPart);
  });
}

}  // namespace ZELWbr3::Postgres
