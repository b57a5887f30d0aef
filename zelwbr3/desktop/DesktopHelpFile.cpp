#include "zelwbr3/desktop/DesktopHelpFile.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include <chm_lib.h>

namespace ZELWbr3::Desktop {

namespace {

struct Close {
  void operator()(chmFile* oFile) const { chm_close(oFile); }
};
using OpenFile = std::unique_ptr<chmFile, Close>;

OpenFile Open(const std::string& sCHMPath) {
  if (sCHMPath.empty()) throw HelpError("No help file was named.");
  std::string sPath = sCHMPath;
  std::ranges::replace(sPath, '\\', '/');
  // A device or pipe would be waited for.
  std::error_code oError;
  const auto eKind = std::filesystem::status(sPath, oError).type();
  if (eKind == std::filesystem::file_type::not_found) {
    throw HelpError("The help file \"" + sCHMPath + "\" does not exist.");
  }
  OpenFile oFile(eKind == std::filesystem::file_type::regular ? chm_open(sPath.c_str()) : nullptr);
  if (oFile == nullptr) {
    throw HelpError("The file \"" + sCHMPath + "\" cannot be read, or is not a compiled help file.");
  }
  return oFile;
}

std::optional<chmUnitInfo> Find(chmFile& oFile, const std::string& sObject) {
  chmUnitInfo oFound{};
  // The library takes a path up to its first NUL.
  const bool bFound = !sObject.empty() && !sObject.ends_with('/') && sObject.find('\0') == std::string::npos &&
                      chm_resolve_object(&oFile, ("/" + sObject).c_str(), &oFound) == CHM_RESOLVE_SUCCESS;
  return bFound ? std::optional(oFound) : std::nullopt;
}

}  // namespace

bool DesktopHelpFile::HasTopic(const std::string& sCHMPath, const std::string& sHelpID) {
  try {
    return Find(*Open(sCHMPath), sHelpID + ".htm").has_value();
  } catch (const HelpError&) {
    return false;
  }
}

std::string DesktopHelpFile::Read(const std::string& sCHMPath, const std::string& sObject) {
  const OpenFile oFile = Open(sCHMPath);
  auto oFound = Find(*oFile, sObject);
  if (!oFound) throw HelpError("The help file \"" + sCHMPath + "\" has no topic \"" + sObject + "\".");
  if (oFound->length > MaxBytes) {
    throw HelpError("\"" + sObject + "\" in the help file \"" + sCHMPath + "\" is too large to be shown.");
  }
  std::string sContent(oFound->length, '\0');
  const auto lRead = chm_retrieve_object(oFile.get(), &*oFound, reinterpret_cast<unsigned char*>(sContent.data()), 0,
                                         static_cast<LONGINT64>(sContent.size()));
  if (lRead != static_cast<LONGINT64>(sContent.size())) {
    throw HelpError("\"" + sObject + "\" in the help file \"" + sCHMPath + "\" cannot be read; the file is damaged.");
  }
  return sContent;
}

}  // namespace ZELWbr3::Desktop
