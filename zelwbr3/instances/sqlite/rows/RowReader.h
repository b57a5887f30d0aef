#pragma once

#include "zelwbr3/instances/common/RowBlock.h"

#include <utility>

namespace ZELWbr3::SQLite {

class Connection;
class Statement;

/// The rows of one list, block by block.
///
/// While a page is only looked at, nothing is open in the database: in a file
/// with a rollback journal an open statement would block writers, in WAL mode it
/// would keep the log from starting over. So the rows of
/// different blocks can be of different moments.
class RowReader {
 public:
  virtual ~RowReader() = default;

  const std::vector<Instances::RowColumn>& Columns() const { return m_oColumns; }
  /// Fills the block with the next rows. Answers whether there are more after
  /// it. Raises ZELLib3::InstanceError; the next call then starts at the same
  /// row again.
  virtual bool Read(Connection& oConnection, Instances::RowBlock& oBlock) = 0;
  /// The next block will not be asked for at once: lets go of what is kept open
  /// for it.
  virtual void Pause() {}

 protected:
  /// The columns of a statement from iFirst on.
  static std::vector<Instances::RowColumn> ColumnsOf(const Statement& oStatement, int iFirst);
  /// The current row of it. Raises ZELLib3::InstanceError, naming sAsked, when
  /// the table has other columns by now: the library notices that in the first
  /// step, and prepares the statement again by itself.
  Instances::RowTexts RowOf(const Statement& oStatement, int iFirst, const std::string& sAsked) const;

  std::vector<Instances::RowColumn> m_oColumns;
};

/// A short list that is there already.
class ListReader : public RowReader {
 public:
  ListReader(std::vector<Instances::RowColumn> oColumns, std::vector<Instances::RowTexts> oRows)
      : m_oRows(std::move(oRows)) {
    m_oColumns = std::move(oColumns);
  }

  bool Read(Connection&, Instances::RowBlock& oBlock) override {
    while (m_lNext < m_oRows.size() && !oBlock.IsFull()) oBlock.Add(m_oRows[m_lNext++]);
    return m_lNext < m_oRows.size();
  }

 private:
  std::vector<Instances::RowTexts> m_oRows;
  std::size_t m_lNext = 0;
};

}  // namespace ZELWbr3::SQLite
