#include "bench/Memory.h"

#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace ZELWbr3::Bench {
namespace {

/// The value of a line of a file in /proc; empty if there is none.
std::string Line(const std::filesystem::path& oFile, const std::string& sBegin) {
  std::ifstream oStream(oFile);
  for (std::string sLine; std::getline(oStream, sLine);) {
    if (!sLine.starts_with(sBegin)) continue;
    return sLine.substr(std::min(sLine.find_first_not_of(" \t", sBegin.size()), sLine.size()));
  }
  return "";
}

bool IsOurs(const std::filesystem::path& oProcess) {
  const std::string sSelf = std::to_string(getpid());
  if (oProcess.filename() == sSelf) return true;
  return Line(oProcess / "status", "PPid:") == sSelf && Line(oProcess / "status", "Name:").starts_with("WebKitWebProc");
}

}  // namespace

double MegabytesUsed() {
  double dKilobytes = 0;
  for (const auto& oEntry : std::filesystem::directory_iterator("/proc")) {
    if (!IsOurs(oEntry.path())) continue;
    const std::string sSize = Line(oEntry.path() / "smaps_rollup", "Pss:");
    if (!sSize.empty()) dKilobytes += std::stod(sSize);
  }
  if (dKilobytes == 0) throw std::runtime_error("The system does not tell the memory of processes");
  return dKilobytes / 1024;
}

}  // namespace ZELWbr3::Bench
