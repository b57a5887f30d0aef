#include "host/OpenWindow.h"

#include <wx/stdpaths.h>
#include <wx/utils.h>

namespace ZELWbr3::Host {

bool OpenWindow(const std::string& sInstance) {
  const std::string sProgram = std::string(wxStandardPaths::Get().GetExecutablePath().utf8_str());
  const char* const sArguments[] = {sProgram.c_str(), sInstance.empty() ? nullptr : sInstance.c_str(), nullptr};
  return wxExecute(sArguments, wxEXEC_ASYNC) != 0;
}

}  // namespace ZELWbr3::Host
