#include "host/ShippedFile.h"

namespace ZELWbr3::Host {

namespace fs = std::filesystem;

fs::path ShippedFile(const std::string& sName, const fs::path& oInBuildTree) {
  std::error_code eIgnored;
  const fs::path oProgram = fs::read_symlink("/proc/self/exe", eIgnored);
  // A build tree has its programs one folder down; a prefix to install to may be
  // inside it as well.
  if (oProgram.parent_path().parent_path() == fs::weakly_canonical(ZELWBR3_BUILD_FOLDER, eIgnored)) return oInBuildTree;
  const fs::path oBeside = (oProgram.parent_path() / ZELWBR3_SHARED_FROM_PROGRAM / sName).lexically_normal();
  return fs::exists(oBeside, eIgnored) ? oBeside : fs::path(ZELWBR3_SHARED_INSTALLED) / sName;
}

}  // namespace ZELWbr3::Host
