#include "instances/sqlite/UserFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace ZELWbr3::SQLite {

namespace {

// A relative path in one of the variables counts as not set.
std::filesystem::path AbsoluteFrom(const char* sVariable) {
  const char* sValue = std::getenv(sVariable);
  return sValue && *sValue == '/' ? sValue : "";
}

}  // namespace

std::filesystem::path UserFolder(UserFiles eFiles) {
  const bool bState = eFiles == UserFiles::State;
  if (const auto oPath = AbsoluteFrom(bState ? "XDG_STATE_HOME" : "XDG_DATA_HOME"); !oPath.empty()) {
    return oPath / "zelwbr3";
  }
  auto oHome = AbsoluteFrom("HOME");
  if (oHome.empty()) {
    const passwd* pUser = getpwuid(geteuid());
    if (pUser && pUser->pw_dir && *pUser->pw_dir == '/') oHome = pUser->pw_dir;
  }
  if (oHome.empty()) throw std::runtime_error("The user has no home folder, and HOME is not set");
  return oHome / ".local" / (bState ? "state" : "share") / "zelwbr3";
}

}  // namespace ZELWbr3::SQLite
