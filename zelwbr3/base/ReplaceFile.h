#pragma once

#include "zelwbr3/base/Export.h"

#include <string>
#include <string_view>

namespace ZELWbr3 {

/// Replaces what a file contains, in one step: after an error the old file is still
/// there, and no new one. What is no regular file, such as a pipe or a device, is
/// written to as it is; a link leads to the file that is replaced. Raises
/// std::runtime_error with the reason, which does not name the file.
ZELWBR3_EXPORT void ReplaceFile(const std::string& sPath, std::string_view sBytes);

}  // namespace ZELWbr3
