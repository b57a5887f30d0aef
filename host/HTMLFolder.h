#pragma once

#include <string>

namespace ZELWbr3::Host {

/// The folder of the page files: the one that the environment variable
/// ZELWBR3_HTML names, else the project's own, else the installed one. Throws
/// std::runtime_error that names the folder when it holds no page files.
std::string HTMLFolder();

}  // namespace ZELWbr3::Host
