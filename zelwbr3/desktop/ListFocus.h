#pragma once

#include "zelwbr3/base/Export.h"

class wxWindow;

namespace ZELWbr3::Desktop {

/// Gives the keyboard to the rows of a list control. The toolkit gives it to the
/// part around them that scrolls, where the arrow keys do not choose a row.
ZELWBR3_EXPORT void FocusRows(const wxWindow& oList);

/// Selects a row, counted from 0, and continues there with the arrow keys: the
/// toolkit's own functions leave the keyboard's place behind.
ZELWBR3_EXPORT void SelectRow(const wxWindow& oList, int iRow);

}  // namespace ZELWbr3::Desktop
