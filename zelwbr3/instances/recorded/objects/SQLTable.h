#pragma once

#include "zelwbr3/instances/recorded/objects/Rows.h"

namespace ZELWbr3::Recorded {

/// A table that is looked up among the recorded ones when it is opened.
class SQLTable final : public Rows<ZELLib3::SQLTable> {
 public:
  explicit SQLTable(const Place& oPlace) : Rows(oPlace, Nothing()) {}

 private:
  const Json* Source() override {
    for (const Json& oTable : *Here().pValue) {
      if (oTable.value("Owner", "") == Owner() && oTable.value("Name", "") == Name()) return &oTable;
    }
    Shared().FailedBecause("The recording does not hold the table " + Owner() + "." + Name());
    return nullptr;
  }
};

}  // namespace ZELWbr3::Recorded
