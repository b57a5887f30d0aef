#pragma once

#include "zelwbr3/instances/sqlite/rows/StatementReader.h"

#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

/// A table, virtual table or view as the schema names it.
struct SchemaTable {
  std::string Schema;
  std::string Name;
  std::string Type;  ///< "table", "virtual", "view"
  bool IsStrict = false;

  /// Those of all databases, the schema tables included, by schema and name.
  /// Raises ZELLib3::InstanceError.
  static std::vector<SchemaTable> All(Connection& oConnection);
};

/// Rows that are asked for table by table: one that cannot be read, or takes too
/// long, has a row that says so, and does not keep the others from being shown.
class TablewiseReader : public StatementReader {
 public:
  /// What a statement that asks for a table is to raise: the error without the
  /// file's name stands in the table's row.
  static constexpr char Asked[] = "cannot be read";

  /// The rows of one table. Raises ZELLib3::InstanceError.
  using RowsOf = std::vector<Instances::RowTexts> (*)(Connection& oConnection, const SchemaTable& oTable);
  /// The row of a table of which only the error is known.
  using RowOfError = Instances::RowTexts (*)(const SchemaTable& oTable, const std::string& sError);

  TablewiseReader(Connection& oConnection, std::vector<Instances::RowColumn> oColumns, RowsOf fnRows,
                  RowOfError fnErrorRow);

 private:
  struct Position {
    std::size_t Table = 0;
    std::size_t Row = 0;  ///< of the table
  };

  bool Continue(Connection& oConnection, Instances::RowBlock& oBlock) override;
  void Deliver(const Instances::RowBlock&) override { m_oDelivered = m_oRead; }
  std::vector<Instances::RowTexts> Rows(Connection& oConnection, const SchemaTable& oTable) const;

  std::vector<SchemaTable> m_oTables;
  RowsOf m_fnRows;
  RowOfError m_fnErrorRow;
  Position m_oRead;
  Position m_oDelivered;
};

}  // namespace ZELWbr3::SQLite
