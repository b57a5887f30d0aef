#pragma once

#include <string>

/// The files that come with the programs, found from the program's own folder
/// (../share/zelwbr3 from there, which in a build tree leads to the source), so that
/// an installation can be moved.
namespace ZELWbr3::Host {

/// The folder of the page files, or the one that the environment variable
/// ZELWBR3_HTML names. Throws std::runtime_error that names the folder when it
/// holds no page files.
std::string HTMLFolder();

/// The compiled help file, the folder of its topics where it was not compiled, or
/// what the environment variable ZELWBR3_HELP names. It need not exist: that is said
/// when a topic is asked for.
std::string HelpFile();

}  // namespace ZELWbr3::Host
