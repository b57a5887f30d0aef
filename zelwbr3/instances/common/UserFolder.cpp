#include "zelwbr3/instances/common/UserFolder.h"

#include "zelwbr3/instances/common/SystemUser.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::Instances {

namespace {

std::string Folder(const char* sVariable, const char* sBelowHome) {
  namespace fs = std::filesystem;
  const char* sBase = std::getenv(sVariable);
  if (sBase && *sBase == '/') return fs::path(sBase) / "zelwbr3";
  const char* pHome = std::getenv("HOME");
  std::string sHome = pHome ? pHome : "";
  if (!sHome.starts_with('/')) sHome = SystemUser::Of(geteuid()).value_or(SystemUser()).Home;
  if (!sHome.starts_with('/')) {
    throw std::runtime_error(std::string("A home folder is needed, and neither HOME nor ") + sVariable + " is set");
  }
  return fs::path(sHome) / ".local" / sBelowHome / "zelwbr3";
}

}  // namespace

std::string UserFolder::Data() { return Folder("XDG_DATA_HOME", "share"); }

std::string UserFolder::State() { return Folder("XDG_STATE_HOME", "state"); }

}  // namespace ZELWbr3::Instances
