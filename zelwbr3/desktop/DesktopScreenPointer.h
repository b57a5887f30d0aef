#pragma once

#include "zelwbr3/platform/ScreenPointer.h"

#include <memory>
#include <vector>

namespace ZELWbr3::Desktop {

/// The mouse pointer over all windows of the program. Of the pointers' numbers
/// the hourglass is shown as such, every other one as the usual pointer.
class DesktopScreenPointer : public ScreenPointer {
 public:
  DesktopScreenPointer();
  ~DesktopScreenPointer() override;

  Integer MousePointer() const override { return m_iPointer; }
  void MousePointer(Integer iPointer) override;

 private:
  struct Covered;

  Integer m_iPointer = Default;
  /// Web views have pointers of their own, which the hourglass covers.
  std::vector<std::unique_ptr<Covered>> m_oCovered;
};

}  // namespace ZELWbr3::Desktop
