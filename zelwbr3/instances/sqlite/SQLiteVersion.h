#pragma once

#include "zelwbr3/ZELLib3/Version.h"

namespace ZELWbr3::SQLite {

/// The version of the SQLite library, and the version of the pages' vocabulary
/// that a database file can fill: all rows of it.
class SQLiteVersion : public ZELLib3::Version {
 public:
  /// Such as "SQLite 3.40.1".
  std::string Text() const override;
  ZELLib3::Long Major() const override { return 7; }
  ZELLib3::Long Minor() const override { return 6; }
  ZELLib3::Long Number() const override { return 0x07060010; }
  ZELLib3::Long Release() const override { return 0x07060010; }
  ZELLib3::Long BuildVersion() const override { return 0x07060010; }
};

}  // namespace ZELWbr3::SQLite
