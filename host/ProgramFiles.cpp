#include "host/ProgramFiles.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

namespace fs = std::filesystem;

/// A file or folder by its name, chosen by a variable of the environment or found.
fs::path Find(const char* sVariable, const char* sName) {
  if (const char* pChosen = std::getenv(sVariable)) return pChosen;
  std::error_code eIgnored;
  const fs::path oProgram = fs::read_symlink("/proc/self/exe", eIgnored);
  return (oProgram.parent_path() / ZELWBR3_FROM_BIN_TO_DATA / sName).lexically_normal();
}

}  // namespace

std::string HTMLFolder() {
  const fs::path oFolder = Find("ZELWBR3_HTML", "html");
  std::error_code eIgnored;
  if (fs::exists(oFolder / "Main.htm", eIgnored)) return oFolder;
  throw std::runtime_error("The folder \"" + oFolder.string() + "\" contains no page files");
}

std::string HelpFile() {
  const fs::path oCompiled = Find("ZELWBR3_HELP", "messages.chm");
  std::error_code eIgnored;
  return fs::exists(oCompiled, eIgnored) ? oCompiled : Find("ZELWBR3_HELP", "messages");
}

}  // namespace ZELWbr3::Host
