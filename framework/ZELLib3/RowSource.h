#pragma once

#include "framework/ZELLib3/Error.h"

namespace ZELLib3 {

/// Rows that are read in blocks. Open delivers the first block, ReadMore the
/// next; within a block NextRow steps from row to row and Value reads the
/// current one. A text of "(null)" is a missing value.
class RowSource {
 public:
  virtual ~RowSource() = default;

  virtual bool IsEmpty() const { return true; }
  /// Rows delivered so far.
  virtual Long RowCount() const { return 0; }
  virtual Long ColumnCount() const { return 0; }
  /// Columns count from 0; an index out of bounds raises std::out_of_range.
  virtual std::string ColumnName(Long) const { throw std::out_of_range("There are no columns"); }
  virtual std::string ColumnTitle(Long) const { throw std::out_of_range("There are no columns"); }
  virtual bool Open() { return true; }
  virtual bool ReadMore() { return false; }
  virtual bool NextRow() { return false; }
  virtual std::string Value(Long) const { throw std::out_of_range("There is no current row"); }
  /// The block's last row has been stepped over.
  virtual bool EndOfBlock() const { return true; }
  /// Rows remain beyond the block.
  virtual bool HasMore() const { return false; }
};

}  // namespace ZELLib3
