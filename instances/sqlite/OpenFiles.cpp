#include "instances/sqlite/OpenFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <memory>

namespace ZELWbr3::SQLite {

namespace {

struct CloseFolder {
  void operator()(DIR* pFolder) const { closedir(pFolder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

bool HoldsOpen(const char* sProcess, const FileId& oFile) {
  const Folder oFolder(opendir(("/proc/" + std::string(sProcess) + "/fd").c_str()));
  if (!oFolder) return false;
  while (const dirent* pEntry = readdir(oFolder.get())) {
    if (pEntry->d_name[0] == '.') continue;
    // Without asking a file server: some process's dead network file must not
    // hang this one.
    struct statx oStat {};
    if (statx(dirfd(oFolder.get()), pEntry->d_name, AT_STATX_DONT_SYNC, STATX_INO, &oStat) == 0 &&
        oStat.stx_ino == oFile.Inode && makedev(oStat.stx_dev_major, oStat.stx_dev_minor) == oFile.Device) {
      return true;
    }
  }
  return false;
}

long long KernelLimit(const char* sName) {
  std::ifstream oStream(std::string("/proc/sys/kernel/") + sName);
  long long lValue = 0;
  return oStream >> lValue && lValue > 0 ? lValue : std::numeric_limits<long long>::max();
}

}  // namespace

int OpenFiles::Processes(const FileId& oFile) {
  const Folder oFolder(opendir("/proc"));
  if (!oFolder) return 0;
  int iCount = 0;
  while (const dirent* pEntry = readdir(oFolder.get())) {
    const char cFirst = pEntry->d_name[0];
    if (cFirst >= '1' && cFirst <= '9' && HoldsOpen(pEntry->d_name, oFile)) ++iCount;
  }
  return iCount;
}

int OpenFiles::ProcessLimit() {
  const long long lLimit = std::min(KernelLimit("pid_max"), KernelLimit("threads-max"));
  return lLimit > std::numeric_limits<int>::max() ? 0 : static_cast<int>(lLimit);
}

}  // namespace ZELWbr3::SQLite
