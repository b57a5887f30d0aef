#pragma once

#include <string>

namespace ZELWbr3::Instances {

/// The absolute name of a file without symbolic links and "..". A link whose
/// target does not exist is followed, too: the name of a file does not change
/// when the file goes. What cannot be resolved stays as it is.
std::string ResolveLinks(const std::string& sPath);

}  // namespace ZELWbr3::Instances
