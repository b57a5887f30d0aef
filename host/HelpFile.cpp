#include "host/HelpFile.h"

#include <cstdlib>
#include <filesystem>

namespace ZELWbr3::Host {

std::string HelpFile() {
  if (const char* pChosen = std::getenv("ZELWBR3_HELP")) return pChosen;
  // What was built here goes before what some other version has installed.
  std::error_code eIgnored;
  return std::filesystem::exists(ZELWBR3_HELP_BUILT, eIgnored) ? ZELWBR3_HELP_BUILT : ZELWBR3_HELP_INSTALLED;
}

}  // namespace ZELWbr3::Host
