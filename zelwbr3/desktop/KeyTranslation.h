#pragma once

#include "zelwbr3/base/Checked.h"

class wxKeyEvent;
typedef struct _GdkEventKey GdkEventKey;

namespace ZELWbr3::Desktop {

/// A key as document events tell it.
struct Key {
  Long Code;              ///< the classic key code: letters and digits by their capital, Escape 27, F1 112; 0 = none
  bool Modified = false;  ///< Control, Alt or the system's key is held
};

/// The key's place on the keyboard decides, so that a letter has one code with
/// and without Shift and in every layout that has Latin letters at all.
Key Translate(const GdkEventKey& oEvent);
Key Translate(const wxKeyEvent& oEvent);

}  // namespace ZELWbr3::Desktop
