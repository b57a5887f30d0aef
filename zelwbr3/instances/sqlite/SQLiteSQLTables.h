#pragma once

#include "zelwbr3/ZELLib3/SQLTables.h"
#include "zelwbr3/instances/sqlite/SQLiteSQLTable.h"

namespace ZELWbr3::SQLite {

/// The factory of the objects that read tables and views.
class SQLiteSQLTables : public ZELLib3::SQLTables {
 public:
  explicit SQLiteSQLTables(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  std::shared_ptr<ZELLib3::SQLTable> NewTable() override { return std::make_shared<SQLiteSQLTable>(m_oFile); }

 private:
  std::shared_ptr<InstanceFile> m_oFile;
};

}  // namespace ZELWbr3::SQLite
