#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Export.h"

#include <array>
#include <memory>
#include <span>
#include <string_view>

namespace ZELWbr3 {

/// Describes an area of the instance for its page: where its figures come from
/// and which elements they go to. It contains all differences between the pages
/// of the data area and the log area.
struct ZELWBR3_EXPORT StorageArea {
  using Instance = ZELLib3::Database;
  using Condition = bool (*)(Instance&);
  using Number = Long (*)(Instance&);

  /// What a figure's number means, and how it is shown.
  enum class Kind {
    Count,
    Size,   ///< pages
    Share,  ///< pages, with the percentage of Size(0) in the element ID + "Pct"
    Whole,  ///< pages that count as 100 percent
  };

  /// A figure of a header table. If it has a row, which is hidden in the page
  /// file, the row is shown if the condition holds.
  struct Figure {
    std::string_view ID;
    StorageArea::Kind Kind;
    Number Value;
    std::string_view Row = {};
    Condition Shown = nullptr;
  };

  /// A setting with a table for each of its codes 0, 1 and 2, and one for kernels
  /// that do not provide it. At most one of them is shown.
  struct Setting {
    Condition WrongVersion;
    std::string_view WrongVersionTable;
    Number Code;
    std::array<std::string_view, 3> Tables;
  };

  /// A parameter of the area, listed if the kernel has it.
  struct Parameter {
    const char* Name;
    Condition Listed;
    /// If this parameter does not exist, the following ones are not listed.
    bool EndsList = false;
  };

  /// A counter of the log writer.
  struct Counter {
    std::string_view ID;
    int Index;
  };

  const char* Name;
  int PageType;
  /// Kind of the volumes to list.
  int VolumeKind;
  bool (*Refresh)(Instance&);
  std::shared_ptr<ZELLib3::Volumes> (*Volumes)(Instance&);
  /// The reference of percentages, in pages.
  Number ReferenceSize;
  std::span<const Figure> Summary;
  std::span<const Figure> Usage;
  std::span<const Setting> Settings;
  std::string_view ParameterTable;
  std::span<const Parameter> Parameters;
  /// If there are any, the page has a tab for them.
  std::span<const Counter> Counters;
};

extern const StorageArea DataStorageArea;
extern const StorageArea LogStorageArea;

}  // namespace ZELWbr3
