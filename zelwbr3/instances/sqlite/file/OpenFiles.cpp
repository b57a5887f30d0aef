#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/common/SystemUser.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <sstream>

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

std::vector<int> HolderNumbers(const FileId& oFile) {
  std::vector<int> oNumbers;
  const Folder oFolder(opendir("/proc"));
  if (!oFolder) return oNumbers;
  while (const dirent* pEntry = readdir(oFolder.get())) {
    const char cFirst = pEntry->d_name[0];
    if (cFirst >= '1' && cFirst <= '9' && HoldsOpen(pEntry->d_name, oFile))
      oNumbers.push_back(std::atoi(pEntry->d_name));
  }
  std::ranges::sort(oNumbers);
  return oNumbers;
}

std::string ProgramName(const std::string& sProcess) {
  char sTarget[PATH_MAX];
  const ssize_t n = readlink((sProcess + "/exe").c_str(), sTarget, sizeof sTarget);
  if (n > 0) return std::filesystem::path(std::string(sTarget, static_cast<std::size_t>(n))).filename();
  std::ifstream oStream(sProcess + "/comm");
  std::string sName;
  std::getline(oStream, sName);
  return sName;
}

std::string UserName(uid_t lUser) {
  const auto oUser = Instances::SystemUser::Of(lUser);
  return oUser ? oUser->Name : std::to_string(lUser);
}

/// Seconds since 1970; 0 when not known.
std::time_t BootTime() {
  std::ifstream oStream("/proc/stat");
  for (std::string sWord; oStream >> sWord;) {
    if (std::time_t tBoot = 0; sWord == "btime" && oStream >> tBoot) return tBoot;
  }
  return 0;
}

ZELLib3::Date StartTime(const std::string& sProcess) {
  std::ifstream oStream(sProcess + "/stat");
  std::string sLine;
  std::getline(oStream, sLine);
  // The program's name stands in brackets and may hold anything; the start is
  // the twentieth word after it, in ticks since the system was booted.
  std::istringstream oWords(sLine.substr(std::min(sLine.size(), sLine.rfind(')') + 1)));
  std::string sWord;
  for (int i = 0; i < 19; ++i) oWords >> sWord;
  long long lTicks = 0;
  const std::time_t tBoot = BootTime();
  if (!(oWords >> lTicks) || tBoot == 0) return {};
  return Calendar::LocalTime(tBoot + static_cast<std::time_t>(lTicks / sysconf(_SC_CLK_TCK)));
}

long long KernelLimit(const char* sName) {
  std::ifstream oStream(std::string("/proc/sys/kernel/") + sName);
  long long lValue = 0;
  return oStream >> lValue && lValue > 0 ? lValue : std::numeric_limits<long long>::max();
}

}  // namespace

int OpenFiles::Processes(const FileId& oFile) { return static_cast<int>(HolderNumbers(oFile).size()); }

std::vector<OpenFiles::Process> OpenFiles::Holders(const FileId& oFile) {
  std::vector<Process> oProcesses;
  for (const int iProcess : HolderNumbers(oFile)) {
    const std::string sFolder = "/proc/" + std::to_string(iProcess);
    struct stat oStat {};
    if (stat(sFolder.c_str(), &oStat) != 0) continue;  // it has just ended
    oProcesses.push_back({iProcess, ProgramName(sFolder), UserName(oStat.st_uid), StartTime(sFolder)});
  }
  return oProcesses;
}

std::optional<std::vector<OpenFiles::Lock>> OpenFiles::Locks() {
  std::ifstream oStream("/proc/locks");
  if (!oStream) return std::nullopt;
  std::vector<Lock> oLocks;
  // "1: POSIX  ADVISORY  WRITE 4711 08:01:131 1073741824 1073742335"; one that
  // waits for a lock has "->" after the number, and holds none.
  for (std::string sLine; std::getline(oStream, sLine);) {
    std::istringstream oLine(sLine);
    std::string sNumber, sKind, sAdvice, sMode, sFile, sLast;
    Lock oLock{};
    if (!(oLine >> sNumber >> sKind >> sAdvice >> sMode >> oLock.Process >> sFile >> oLock.First >> sLast)) continue;
    const auto iColon = sFile.rfind(':');
    if (iColon == std::string::npos) continue;
    oLock.Inode = std::strtoull(sFile.c_str() + iColon + 1, nullptr, 10);
    oLock.IsExclusive = sMode == "WRITE";
    oLock.Last = sLast == "EOF" ? std::numeric_limits<std::int64_t>::max() : std::strtoll(sLast.c_str(), nullptr, 10);
    oLocks.push_back(oLock);
  }
  return oLocks;
}

int OpenFiles::ProcessLimit() {
  const long long lLimit = std::min(KernelLimit("pid_max"), KernelLimit("threads-max"));
  return lLimit > std::numeric_limits<int>::max() ? 0 : static_cast<int>(lLimit);
}

}  // namespace ZELWbr3::SQLite
