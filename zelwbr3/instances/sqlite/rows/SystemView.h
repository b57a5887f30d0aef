#pragma once

#include "zelwbr3/instances/sqlite/rows/RowReader.h"

#include <memory>
#include <span>

namespace ZELWbr3::SQLite {

/// One list of what a database file, this connection to it, or the library
/// knows about itself.
struct SystemView {
  using ReaderFactory = std::unique_ptr<RowReader> (*)(Connection& oConnection);

  const char* Name;
  const char* Description;
  bool IsRecord;
  ReaderFactory MakeReader;

  /// Those that the library can fill, in the order in which they are listed.
  /// Always the same while the program runs.
  static std::span<const SystemView> All();
};

}  // namespace ZELWbr3::SQLite
