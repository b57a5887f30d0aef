#pragma once

#include "zelwbr3/ZELLib3/SQLTable.h"
#include "zelwbr3/base/Export.h"

#include <memory>

namespace ZELLib3 {

/// The factory of SQLTable objects.
class ZELWBR3_EXPORT SQLTables {
 public:
  virtual ~SQLTables() = default;

  /// Never null. By default, an empty table.
  virtual std::shared_ptr<SQLTable> NewTable() { return std::make_shared<SQLTable>(); }
};

}  // namespace ZELLib3
