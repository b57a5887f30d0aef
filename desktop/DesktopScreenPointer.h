#pragma once

#include "platform/ScreenPointer.h"

namespace ZELWbr3::Desktop {

/// The mouse pointer over all windows of the program. Of the pointers' numbers
/// the hourglass is shown as such, every other one as the usual pointer.
class DesktopScreenPointer : public ScreenPointer {
 public:
  ~DesktopScreenPointer() override;

  Integer MousePointer() const override { return m_iPointer; }
  void MousePointer(Integer iPointer) override;

 private:
  Integer m_iPointer = Default;
};

}  // namespace ZELWbr3::Desktop
