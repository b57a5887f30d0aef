#pragma once

#include <string>
#include <vector>

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

/// The topics of the help file that are worth a line in its contents, each with its
/// title, in the order of the titles. None where the help was not built.
struct HelpTopic {
  std::string Title;
  std::string ID;
};
std::vector<HelpTopic> HelpContents();

/// The program zelreport beside this one, or the one that the environment variable
/// ZELWBR3_REPORT names. It need not exist.
std::string ReportProgram();

}  // namespace ZELWbr3::Host
