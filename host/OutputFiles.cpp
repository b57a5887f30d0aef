#include "host/OutputFiles.h"

#include "host/OpenInstance.h"
#include "zelwbr3/base/ReplaceFile.h"
#include "zelwbr3/instances/common/ResolveLinks.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace ZELWbr3::Host {

namespace {

namespace fs = std::filesystem;

/// A file that keeps what is written into it; devices and pipes do not.
bool Holds(const fs::path& oFile) {
  std::error_code eIgnored;
  const fs::file_status oStatus = fs::status(oFile, eIgnored);
  return !fs::exists(oStatus) || fs::is_regular_file(oStatus);
}

bool IsSame(const fs::path& a, const fs::path& b) {
  std::error_code eIgnored;
  if (!Holds(a) || !Holds(b)) return false;
  // The same file by two names (hard links), or the same name of what is not
  // there yet.
  return fs::equivalent(a, b, eIgnored) || Instances::ResolveLinks(a) == Instances::ResolveLinks(b);
}

/// Why a file cannot be written; 0 when it can.
int Obstacle(const fs::path& oFile) {
  std::error_code eIgnored;
  const fs::file_status oStatus = fs::status(oFile, eIgnored);
  if (fs::is_directory(oStatus)) return EISDIR;
  const fs::path oFolder = oFile.has_parent_path() ? oFile.parent_path() : fs::path(".");
  const bool bWritable =
      fs::exists(oStatus) ? access(oFile.c_str(), W_OK) == 0 : access(oFolder.c_str(), W_OK | X_OK) == 0;
  return bWritable ? 0 : errno;
}

[[noreturn]] void Refuse(const OutputFile& oOutput, const std::string& sWhy) {
  throw std::invalid_argument(std::string(oOutput.Option) + ": the file \"" + oOutput.File + "\" " + sWhy);
}

}  // namespace

void CheckOutputFiles(const std::string& sInstance, const std::vector<OutputFile>& files) {
  for (auto oOutput = files.begin(); oOutput != files.end(); ++oOutput) {
    if (oOutput->File.empty()) continue;
    for (const std::string& sFile : FilesOf(sInstance)) {
      if (IsSame(oOutput->File, sFile)) Refuse(*oOutput, "belongs to the instance itself and would be lost");
    }
    for (auto oOther = files.begin(); oOther != oOutput; ++oOther) {
      if (!oOther->File.empty() && IsSame(oOutput->File, oOther->File)) {
        Refuse(*oOutput, "is written by " + std::string(oOther->Option) + ", too");
      }
    }
    if (const int lError = Obstacle(oOutput->File)) {
      Refuse(*oOutput, "cannot be written: " + std::generic_category().message(lError));
    }
  }
}

void WriteFile(const std::string& sFile, std::string_view sBytes) {
  try {
    ReplaceFile(sFile, sBytes);
  } catch (const std::runtime_error& oError) {
    throw std::runtime_error("The file \"" + sFile + "\" cannot be written: " + oError.what());
  }
}

}  // namespace ZELWbr3::Host
