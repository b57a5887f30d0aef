#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <array>
#include <memory>
#include <span>
#include <string_view>

namespace ZELWbr3 {

/// An area of the instance as its page shows it: where its figures come from,
/// and which elements they go into. All that sets the pages of the data area
/// and the log area apart.
struct StorageArea {
  using Instance = ZELLib3::Database;
  using Condition = bool (*)(Instance&);
  using Number = Long (*)(Instance&);

  /// What a figure's number is, and so how it is shown.
  enum class Kind {
    Count,
    Size,   ///< pages
    Share,  ///< pages, with the percentage of Size(0) in the element ID + "Pct"
    Whole,  ///< pages that count as 100 percent
  };

  /// A figure of a header table. One with a row is shown when its condition
  /// holds; the row is hidden in the page file.
  struct Figure {
    std::string_view ID;
    StorageArea::Kind Kind;
    Number Value;
    std::string_view Row = {};
    Condition Shown = nullptr;
  };

  /// A setting with a table for each of its codes 0, 1 and 2, and one for
  /// kernels that do not tell it. At most one of them is shown.
  struct Setting {
    Condition WrongVersion;
    std::string_view WrongVersionTable;
    Number Code;
    std::array<std::string_view, 3> Tables;
  };

  /// A parameter that sizes the area, listed when the kernel has it.
  struct Parameter {
    const char* Name;
    Condition Listed;
    /// Where this one does not exist, the following ones are not looked for.
    bool EndsList = false;
  };

  /// A counter of the log writer.
  struct Counter {
    std::string_view ID;
    int Index;
  };

  const char* Name;
  int PageType;
  /// Of the volumes that are listed.
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
  /// Where there are any the page has a tab for them.
  std::span<const Counter> Counters;
};

extern const StorageArea DataStorageArea;
extern const StorageArea LogStorageArea;

}  // namespace ZELWbr3
