#pragma once

#include "zelwbr3/instances/sqlite/rows/RowReader.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

class Statement;

/// The rows that statements give, block by block.
///
/// While a page is only looked at, nothing is open in the database: in a file
/// with a rollback journal an open statement would block writers, in WAL mode it
/// would keep the log from starting over. So the rows of different blocks can be
/// of different moments.
class StatementReader : public RowReader {
 public:
  /// A value that is too long for the connection is told by its size.
  bool Read(Connection& oConnection, Instances::RowBlock& oBlock) override;

 protected:
  /// Adds the rows after those that were delivered and those in the block. As
  /// Read, but raises as soon as a row cannot be read.
  virtual bool Continue(Connection& oConnection, Instances::RowBlock& oBlock) = 0;
  /// Adds the row that Continue could not read because a value is too long.
  virtual Instances::RowTexts LongRow(Connection& oConnection, std::size_t lInBlock);
  /// The rows of the block are delivered.
  virtual void Deliver(const Instances::RowBlock& oBlock) = 0;

  /// The columns of a statement from iFirst on.
  static std::vector<Instances::RowColumn> ColumnsOf(const Statement& oStatement, int iFirst);
  /// The current row of it. Raises ZELLib3::InstanceError, naming sAsked, when
  /// the table has other columns by now: the library notices that in the first
  /// step, and prepares the statement again by itself.
  Instances::RowTexts RowOf(const Statement& oStatement, int iFirst, const std::string& sAsked) const;

  /// Selects an expression of the row; the statement has been stepped to it.
  using Ask = std::function<Statement(const std::string& sExpression)>;
  /// A value of a row that is too long as a whole: the value, or only its size.
  static std::string LongCell(const std::string& sColumn, const Ask& fnAsk);
};

}  // namespace ZELWbr3::SQLite
