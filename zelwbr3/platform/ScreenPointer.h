#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"

namespace ZELWbr3 {

/// The screen's mouse pointer by its number.
class ZELWBR3_EXPORT ScreenPointer {
 public:
  static constexpr int Default = 0;
  static constexpr int Hourglass = 11;

  virtual ~ScreenPointer() = default;
  virtual Integer MousePointer() const = 0;
  virtual void MousePointer(Integer iPointer) = 0;
};

}  // namespace ZELWbr3
