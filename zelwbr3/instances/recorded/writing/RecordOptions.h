#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ZELWbr3::Recorded {

/// What a recording is to hold beyond what an instance lists by itself.
struct RecordOptions {
  struct Table {
    std::string Owner;
    std::string Name;
  };

  /// An instance cannot list its tables, so only these are recorded, besides
  /// the tables of the data dictionary that it can open.
  std::vector<Table> Tables;
  /// Rows kept of each view, table, history, and bytes of their texts; the rest
  /// is left out with a note.
  std::size_t MaxRows = 10000;
  std::size_t MaxBytes = std::size_t{64} << 20;
};

}  // namespace ZELWbr3::Recorded
