#pragma once

#include "zelwbr3/base/Checked.h"

namespace ZELWbr3 {

/// The kind of a backup history entry, as the pages show it.
struct HistoryKind {
  /// Class of the entry's row, which gives it a colour.
  const char* sClass;
  const char* sName;

  /// The kind with that number; "other" for an unknown number.
  static const HistoryKind& Of(Long lKind);
};

}  // namespace ZELWbr3
