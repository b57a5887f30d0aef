#include "host/HTMLFolder.h"

#include "host/ShippedFile.h"

#include <cstdlib>
#include <stdexcept>

namespace ZELWbr3::Host {

std::string HTMLFolder() {
  const char* pChosen = std::getenv("ZELWBR3_HTML");
  const std::string sFolder = pChosen != nullptr ? pChosen : ShippedFile("html", ZELWBR3_HTML_BUILT).string();
  std::error_code eIgnored;
  if (!std::filesystem::exists(std::filesystem::path(sFolder) / "Main.htm", eIgnored)) {
    throw std::runtime_error("The folder \"" + sFolder + "\" contains no page files");
  }
  return sFolder;
}

}  // namespace ZELWbr3::Host
