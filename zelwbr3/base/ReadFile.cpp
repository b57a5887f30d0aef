#include "zelwbr3/base/ReadFile.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace ZELWbr3 {

std::string ReadFile(const std::string& sPath, std::uintmax_t lMost) {
  namespace fs = std::filesystem;
  std::error_code oError;
  const fs::file_type eType = fs::status(sPath, oError).type();
  if (eType == fs::file_type::not_found) throw ReadFileError("there is no such file");
  if (eType == fs::file_type::none) throw ReadFileError("cannot be read: " + oError.message());
  if (eType == fs::file_type::directory) throw ReadFileError("is a directory");
  if (eType != fs::file_type::regular) throw ReadFileError("is not a regular file");
  const std::uintmax_t lBytes = fs::file_size(sPath, oError);
  if (oError) throw ReadFileError("cannot be read: " + oError.message());
  if (lBytes > lMost) throw ReadFileError("is larger than " + std::to_string(lMost) + " bytes");

  errno = 0;
  std::ifstream oStream(sPath, std::ios::binary);
  std::string sText(lBytes, '\0');
  if (!oStream || (lBytes > 0 && !oStream.read(sText.data(), static_cast<std::streamsize>(lBytes)))) {
    const std::string sReason = errno != 0 ? std::generic_category().message(errno) : "it became shorter";
    throw ReadFileError("cannot be read: " + sReason);
  }
  return sText;
}

}  // namespace ZELWbr3
