#pragma once

#include "zelwbr3/base/Checked.h"

namespace ZELWbr3 {

/// What a backup history entry is about, as the pages show it.
struct HistoryKind {
  /// Class of the entry's row, which gives it a colour.
  const char* sClass;
  const char* sName;

  /// The kind of that number; "other" for an unknown one.
  static const HistoryKind& Of(Long lKind);
};

}  // namespace ZELWbr3
