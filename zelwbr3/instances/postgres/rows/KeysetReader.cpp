#include "zelwbr3/instances/postgres/rows/KeysetReader.h"

#include "zelwbr3/instances/postgres/connection/Queries.h"

namespace ZELWbr3::Postgres {

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

bool KeysetReader::Continue(Connection& oConnection, Instances::RowBlock& oBlock) {
  m_read = m_delivered;
  const std::string sOrder = m_oKey.IsStoredOrder ? "" : " ORDER BY " + m_oKey.List();
  return ReadBlock(oConnection, oBlock, m_oKey.Columns,
                   (m_delivered.empty() ? "" : " WHERE " + m_oKey.After()) + sOrder, m_delivered,
                   [this](const Result& oRow) {
                     m_read.clear();
                     for (std::size_t i = 0; i < m_oKey.Columns.size(); ++i) {
                       m_read.emplace_back(oRow.Text(0, static_cast<int>(i)));
                     }
                   });
}

}  // namespace ZELWbr3::Postgres
