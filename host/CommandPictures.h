#pragma once

#include "zelwbr3/base/Checked.h"

#include <string>
#include <string_view>

namespace ZELWbr3::Host {

/// The picture with a number of modPicture, as SVG of 16 by 16 units; empty for any
/// other.
std::string CommandPicture(Long lNumber);
/// SVG of 16 by 16 units around shapes.
std::string IconSVG(std::string_view sShapes);

}  // namespace ZELWbr3::Host
