#pragma once

#include "zelwbr3/instances/sqlite/file/Statement.h"
#include "zelwbr3/instances/sqlite/rows/RowReader.h"
#include "zelwbr3/instances/sqlite/rows/TableKey.h"

namespace ZELWbr3::SQLite {

/// The rows of a table in the order of its key. Each block continues after the
/// last key of the one before, so a row costs the same wherever it stands, and
/// rows that come and go elsewhere do not shift it.
class KeysetReader : public RowReader {
 public:
  /// sFrom is the table as it stands in a statement; oKey has columns. Raises
  /// ZELLib3::InstanceError when the table cannot be read.
  KeysetReader(Connection& oConnection, const std::string& sFrom, const TableKey& oKey);

  bool Read(Connection& oConnection, Instances::RowBlock& oBlock) override;

 private:
  std::string m_sFirst;  ///< begins at the first row
  std::string m_sNext;   ///< continues after a key
  std::string m_sAsked;
  int m_iKeys;
  std::vector<StoredValue> m_oLast;  ///< key of the last row read
};

}  // namespace ZELWbr3::SQLite
