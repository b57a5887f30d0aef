#pragma once

#include "zelwbr3/base/Export.h"

namespace ZELWbr3::Desktop {

/// How pages look. The browser would take this from the desktop's settings,
/// whatever the program looks like, so it is told to the pages explicitly.
enum class Theme { Light, Dark };

/// The theme that the program's windows have now.
ZELWBR3_EXPORT Theme SystemTheme();

}  // namespace ZELWbr3::Desktop
