#include "desktop/DesktopScreenPointer.h"

#include <wx/utils.h>

namespace ZELWbr3::Desktop {

DesktopScreenPointer::~DesktopScreenPointer() { MousePointer(Default); }

void DesktopScreenPointer::MousePointer(Integer iPointer) {
  const bool bWas = m_iPointer == Hourglass;
  const bool bWill = iPointer == Hourglass;
  m_iPointer = iPointer;
  if (bWill && !bWas) wxBeginBusyCursor();
  if (bWas && !bWill) wxEndBusyCursor();
}

}  // namespace ZELWbr3::Desktop
