#include "bench/Processes.h"

#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

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

const std::string& Self() {
  static const std::string sSelf = std::to_string(getpid());
  return sSelf;
}

std::vector<std::filesystem::path> BrowserProcesses() {
  std::vector<std::filesystem::path> processes;
  for (const auto& oEntry : std::filesystem::directory_iterator("/proc")) {
    const auto oStatus = oEntry.path() / "status";
    if (Line(oStatus, "PPid:") == Self() && Line(oStatus, "Name:").starts_with("WebKitWebProc")) {
      processes.push_back(oEntry.path());
    }
  }
  return processes;
}

}  // namespace

double MegabytesUsed() {
  auto processes = BrowserProcesses();
  processes.push_back("/proc/" + Self());
  double dKilobytes = 0;
  for (const auto& oProcess : processes) {
    const std::string sSize = Line(oProcess / "smaps_rollup", "Pss:");
    if (!sSize.empty()) dKilobytes += std::stod(sSize);
  }
  if (dKilobytes == 0) throw std::runtime_error("The system does not tell the memory of processes");
  return dKilobytes / 1024;
}

double BrowserMilliseconds() {
  double dNanoseconds = 0;
  for (const auto& oProcess : BrowserProcesses()) {
    for (const auto& oThread : std::filesystem::directory_iterator(oProcess / "task")) {
      const std::string sTime = Line(oThread.path() / "schedstat", "");
      if (!sTime.empty()) dNanoseconds += std::stod(sTime);
    }
  }
  return dNanoseconds / 1e6;
}

}  // namespace ZELWbr3::Bench
