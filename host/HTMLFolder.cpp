#include "host/HTMLFolder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

bool HoldsPages(const std::string& sFolder) {
  std::error_code eIgnored;
  return std::filesystem::exists(std::filesystem::path(sFolder) / "Main.htm", eIgnored);
}

}  // namespace

std::string HTMLFolder() {
  const char* pChosen = std::getenv("ZELWBR3_HTML");
  // What was built here goes before what some other version has installed.
  std::string sFolder = pChosen != nullptr               ? pChosen
                        : HoldsPages(ZELWBR3_HTML_BUILT) ? ZELWBR3_HTML_BUILT
                                                         : ZELWBR3_HTML_INSTALLED;
  if (!HoldsPages(sFolder)) throw std::runtime_error("The folder \"" + sFolder + "\" holds no page files");
  return sFolder;
}

}  // namespace ZELWbr3::Host
