#pragma once

#include "zelwbr3/ZELLib3/BlockSource.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// Rows of texts that are read in blocks: NextRow steps from row to row within
/// a block and Value reads the current one. A text of "(null)" is a missing
/// value.
class ZELWBR3_EXPORT RowSource : public BlockSource {
 public:
  virtual Long ColumnCount() const { return 0; }
  /// Columns count from 0; an index out of bounds raises std::out_of_range.
  virtual std::string ColumnName(Long) const { throw std::out_of_range("There are no columns"); }
  virtual std::string ColumnTitle(Long) const { throw std::out_of_range("There are no columns"); }
  virtual bool NextRow() { return false; }
  virtual std::string Value(Long) const { throw std::out_of_range("There is no current row"); }
};

}  // namespace ZELLib3
