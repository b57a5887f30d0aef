#pragma once

#include "zelwbr3/base/Export.h"

#include <wx/image.h>

class wxWindow;

namespace ZELWbr3::Desktop {

/// A picture of a window with all that is in it, web views included, as it was
/// painted last. The window need not be in front.
ZELWBR3_EXPORT wxImage TakePicture(wxWindow& oWindow);

}  // namespace ZELWbr3::Desktop
