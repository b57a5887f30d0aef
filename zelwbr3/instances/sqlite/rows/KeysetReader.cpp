#include "zelwbr3/instances/sqlite/rows/KeysetReader.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"

namespace ZELWbr3::SQLite {

namespace {

/// "?1, ?2".
std::string Parameters(int iCount) {
  std::string sList;
  for (int i = 1; i <= iCount; ++i) sList += (i == 1 ? "?" : ", ?") + std::to_string(i);
  return sList;
}

}  // namespace

KeysetReader::KeysetReader(Connection& oConnection, const std::string& sFrom, const TableKey& oKey)
    : m_sAsked("reading " + sFrom), m_iKeys(static_cast<int>(oKey.Columns.size())) {
  const std::string sSelect = "SELECT " + oKey.List() + ", * FROM " + sFrom;
  // One more than fits, to tell whether there are more.
  const std::string sOrder = " ORDER BY " + oKey.Order() + " LIMIT " + std::to_string(Instances::RowBlock::MaxRows + 1);
  m_sFirst = sSelect + sOrder;
  m_sNext = sSelect + " WHERE (" + oKey.List() + ")" + (oKey.Descending ? " < (" : " > (") + Parameters(m_iKeys) + ")" +
            sOrder;
  const Statement oStatement = oConnection.Prepare(m_sNext, m_sAsked);
  m_oColumns = ColumnsOf(oStatement, m_iKeys);
}

bool KeysetReader::Read(Connection& oConnection, Instances::RowBlock& oBlock) {
  Statement oStatement = oConnection.Prepare(m_oLast.empty() ? m_sFirst : m_sNext, m_sAsked);
  for (std::size_t i = 0; i < m_oLast.size(); ++i) oStatement.BindValue(static_cast<int>(i) + 1, m_oLast[i]);
  std::vector<StoredValue> oLast;
  while (oStatement.Step()) {
    if (oBlock.IsFull()) {
      m_oLast = std::move(oLast);
      return true;
    }
    oBlock.Add(RowOf(oStatement, m_iKeys, m_sAsked));
    if (!oBlock.IsFull()) continue;
    for (int i = 0; i < m_iKeys; ++i) oLast.push_back(oStatement.Value(i));
  }
  return false;
}

}  // namespace ZELWbr3::SQLite
