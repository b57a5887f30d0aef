#pragma once

#include "zelwbr3/instances/sqlite/RowFeed.h"

#include <memory>
#include <span>

namespace ZELWbr3::SQLite {

/// One list of what a database file, this connection to it, or the library
/// knows about itself.
struct SystemView {
  using Feed = std::unique_ptr<RowFeed> (*)(Connection& oConnection);

  const char* Name;
  const char* Description;
  bool IsRecord;
  Feed MakeFeed;

  /// Those that the library can fill, in the order in which they are listed.
  /// Always the same while the program runs.
  static std::span<const SystemView> All();
};

}  // namespace ZELWbr3::SQLite
