#include "host/CommandLine.h"

#include "host/OpenInstance.h"
#include "host/StandardStreams.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/base/Version.h"

#include <iostream>
#include <mutex>

namespace ZELWbr3::Host {

namespace {

std::string& ProgramName() {
  static std::string sName;
  return sName;
}

}  // namespace

int Complain(const std::string& sText) {
  static std::mutex oMutex;
  const std::scoped_lock oLock(oMutex);
  std::cerr << ProgramName() << ": " << Text::OneLine(sText) << std::endl;
  return 1;
}

CommandLine::CommandLine(const std::string& sProgram, const std::string& sDescription)
    : CLI::App(sDescription, sProgram) {
  ReserveStandardStreams();
  ProgramName() = sProgram;
  set_version_flag("--version", sProgram + " " ZELWBR3_VERSION);
}

int CommandLine::Run(int argc, char** argv, const std::function<int()>& oWork) {
  try {
    parse(argc, argv);
  } catch (const CLI::Success& oAsked) {
    return exit(oAsked);  // --help, --version
  } catch (const CLI::ParseError& oError) {
    return Complain(ShownInstance(oError.what()));
  }
  HidePasswords(argc, argv);
  try {
    return oWork();
  } catch (const std::exception& oError) {
    return Complain(oError.what());
  }
}

}  // namespace ZELWbr3::Host
