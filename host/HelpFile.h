#pragma once

#include <string>

namespace ZELWbr3::Host {

/// The programs' compiled help file: the one that the environment variable
/// ZELWBR3_HELP names, else the one that the program is shipped with (ShippedFile).
/// It need not exist; asking for a topic then says so.
std::string HelpFile();

}  // namespace ZELWbr3::Host
