#pragma once

#include "zelwbr3/instances/common/RowBlock.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

class Connection;
class Statement;

/// The rows of one list, block by block.
///
/// While a page is only looked at, nothing is open in the database: in a file
/// with a rollback journal an open statement would block writers, in WAL mode it
/// would keep the log from starting over. So the rows of different blocks can be
/// of different moments.
class RowReader {
 public:
  virtual ~RowReader() = default;

  const std::vector<Instances::RowColumn>& Columns() const { return m_oColumns; }
  /// Fills the empty block with the next rows. Answers whether there are more
  /// after it. When the time for reading is up, or a row cannot be read, the rows
  /// before it are delivered, and the next call starts there again. A value that
  /// is too long for the connection is told by its size. Raises
  /// ZELLib3::InstanceError when there is no row to deliver.
  bool Read(Connection& oConnection, Instances::RowBlock& oBlock);
  /// The next block will not be asked for at once: lets go of what is kept open
  /// for it.
  virtual void Pause() {}

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

  std::vector<Instances::RowColumn> m_oColumns;
};

/// A short list that is there already.
class ListReader : public RowReader {
 public:
  ListReader(std::vector<Instances::RowColumn> oColumns, std::vector<Instances::RowTexts> oRows)
      : m_oRows(std::move(oRows)) {
    m_oColumns = std::move(oColumns);
  }

 private:
  bool Continue(Connection&, Instances::RowBlock& oBlock) override;
  void Deliver(const Instances::RowBlock& oBlock) override { m_lDelivered += oBlock.Rows().size(); }

  std::vector<Instances::RowTexts> m_oRows;
  std::size_t m_lDelivered = 0;
};

}  // namespace ZELWbr3::SQLite
