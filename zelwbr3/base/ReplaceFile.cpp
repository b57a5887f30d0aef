#include "zelwbr3/base/ReplaceFile.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <system_error>

namespace ZELWbr3 {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::error_code& oError) { throw std::runtime_error(oError.message()); }

void Write(const fs::path& oPath, std::string_view sBytes) {
  errno = 0;
  std::ofstream oFile(oPath, std::ios::binary | std::ios::trunc);
  oFile << sBytes;
  oFile.close();
  if (!oFile) Fail({errno, std::generic_category()});
}

}  // namespace

void ReplaceFile(const std::string& sPath, std::string_view sBytes) {
  std::error_code oError;
  const fs::path oFile = fs::is_symlink(sPath, oError) ? fs::weakly_canonical(sPath, oError) : fs::path(sPath);
  const fs::file_status oStatus = fs::status(oFile, oError);
  if (fs::exists(oStatus) && !fs::is_regular_file(oStatus)) return Write(oFile, sBytes);

  fs::path oPart = oFile;
  oPart += "." + std::to_string(std::random_device{}()) + ".part";
  try {
    Write(oPart, sBytes);
    if (fs::exists(oStatus)) fs::permissions(oPart, oStatus.permissions(), oError);
    fs::rename(oPart, oFile, oError);
    if (oError) Fail(oError);
  } catch (...) {
    fs::remove(oPart, oError);
    throw;
  }
}

}  // namespace ZELWbr3
