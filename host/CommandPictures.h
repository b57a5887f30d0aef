#pragma once

#include "zelwbr3/base/Checked.h"

#include <string>

namespace ZELWbr3::Host {

/// The picture with a number of modPicture, as SVG of 16 by 16 units; empty for any
/// other.
std::string CommandPicture(Long lNumber);

}  // namespace ZELWbr3::Host
