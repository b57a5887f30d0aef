#pragma once

#include "zelwbr3/ZELLib3/SQLTables.h"
#include "zelwbr3/instances/common/rows/RowSourceOf.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <memory>

namespace ZELWbr3::Postgres {

/// The rows of a table or view of the connection's database, in the order of a key
/// where it has one. The owner is a schema; empty = where the user's own session
/// would look. Owned by SYSDD are the system tables.
class PostgresSQLTable : public Instances::RowSourceOf<ZELLib3::SQLTable, Server, Connection> {
 public:
  using RowSourceOf::RowSourceOf;

 protected:
  std::unique_ptr<Reader> MakeReader(Connection& oConnection) override;
};

/// The factory of the objects that read tables and views.
class PostgresSQLTables : public ZELLib3::SQLTables {
 public:
  explicit PostgresSQLTables(std::shared_ptr<Server> oServer) : m_oServer(std::move(oServer)) {}

  std::shared_ptr<ZELLib3::SQLTable> NewTable() override { return std::make_shared<PostgresSQLTable>(m_oServer); }

 private:
  std::shared_ptr<Server> m_oServer;
};

}  // namespace ZELWbr3::Postgres
