#pragma once

#include <string>

namespace ZELWbr3::Host {

/// The programs' compiled help file: the one that the environment variable
/// ZELWBR3_HELP names, else the project's own, else the installed one. It need
/// not exist: that is said when a topic is asked for.
std::string HelpFile();

}  // namespace ZELWbr3::Host
