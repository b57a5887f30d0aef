#include "zelwbr3/headless/ReadFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace ZELWbr3::Headless {

std::optional<std::string> ReadFile(const std::string& sPath) {
  // A directory opens like a file, and throws when it is read.
  std::error_code eIgnored;
  std::ifstream oFile(sPath, std::ios::binary);
  if (!oFile || std::filesystem::is_directory(sPath, eIgnored)) return std::nullopt;
  return std::string{std::istreambuf_iterator<char>(oFile), {}};
}

}  // namespace ZELWbr3::Headless
