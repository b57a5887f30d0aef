#pragma once

#include <string>

/// The files that come with the programs. Each is looked for next to the program
/// (../share/zelwbr3 from its folder, which in a build tree leads to the source),
/// then in the folder that the programs are installed to.
namespace ZELWbr3::Host {

/// The folder of the page files, or the one that the environment variable
/// ZELWBR3_HTML names. Throws std::runtime_error that names the folder when it
/// holds no page files.
std::string HTMLFolder();

/// The compiled help file, or the one that the environment variable ZELWBR3_HELP
/// names. It need not exist: that is said when a topic is asked for.
std::string HelpFile();

}  // namespace ZELWbr3::Host
