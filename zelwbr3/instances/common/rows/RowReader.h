#pragma once

#include "zelwbr3/instances/common/rows/RowBlock.h"

#include <utility>
#include <vector>

namespace ZELWbr3::Instances {

/// The rows of one list, block by block, as a connection of an instance reads
/// them.
template <class Connection>
class RowReader {
 public:
  virtual ~RowReader() = default;

  const std::vector<RowColumn>& Columns() const { return m_oColumns; }
  /// Fills the empty block with the next rows. Answers whether there are more
  /// after it. When the time for reading is up, or a row cannot be read, the rows
  /// before it are delivered, and the next call starts there again. Raises
  /// ZELLib3::InstanceError when there is no row to deliver.
  virtual bool Read(Connection& oConnection, RowBlock& oBlock) = 0;
  /// The next block will not be asked for at once: lets go of what is kept open
  /// for it.
  virtual void Pause() {}

 protected:
  std::vector<RowColumn> m_oColumns;
};

/// A list that is there already.
template <class Connection>
class ListReader : public RowReader<Connection> {
 public:
  ListReader(std::vector<RowColumn> oColumns, std::vector<RowTexts> oRows) : m_oRows(std::move(oRows)) {
    this->m_oColumns = std::move(oColumns);
  }

  bool Read(Connection&, RowBlock& oBlock) override {
    while (m_iNext < m_oRows.size() && !oBlock.IsFull()) oBlock.Add(m_oRows[m_iNext++]);
    return m_iNext < m_oRows.size();
  }

 private:
  std::vector<RowTexts> m_oRows;
  std::size_t m_iNext = 0;
};

}  // namespace ZELWbr3::Instances
