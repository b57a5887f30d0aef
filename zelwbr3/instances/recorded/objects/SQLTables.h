#pragma once

#include "zelwbr3/instances/recorded/objects/SQLTable.h"

namespace ZELWbr3::Recorded {

class SQLTables final : public Of<ZELLib3::SQLTables> {
 public:
  using Of::Of;

  /// All tables that the recording holds, which an instance cannot tell.
  const Json& Held() const { return List("Items"); }

  std::shared_ptr<ZELLib3::SQLTable> NewTable() override {
    Do("NewTable");
    return std::make_shared<Recorded::SQLTable>(Place{Here().oState, &List("Items"), Join(Here().sPath, "Item")});
  }
};

}  // namespace ZELWbr3::Recorded
