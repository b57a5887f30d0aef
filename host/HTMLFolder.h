#pragma once

#include <string>

namespace ZELWbr3::Host {

/// The folder of the page files: the one that the environment variable
/// ZELWBR3_HTML names, else the one that the program is shipped with (ShippedFile).
/// Throws std::runtime_error, which names the folder, if it contains no page files.
std::string HTMLFolder();

}  // namespace ZELWbr3::Host
