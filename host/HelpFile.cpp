#include "host/HelpFile.h"

#include "host/ShippedFile.h"

#include <cstdlib>

namespace ZELWbr3::Host {

std::string HelpFile() {
  if (const char* pChosen = std::getenv("ZELWBR3_HELP")) return pChosen;
  return ShippedFile("messages.chm", ZELWBR3_HELP_BUILT).string();
}

}  // namespace ZELWbr3::Host
