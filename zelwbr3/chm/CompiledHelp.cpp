#include "zelwbr3/chm/CompiledHelp.h"

#include "zelwbr3/base/ReadFile.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include <chm_lib.h>

namespace ZELWbr3::CHM {

namespace {

std::string WithSlashes(std::string sPath) {
  std::ranges::replace(sPath, '\\', '/');
  return sPath;
}

struct Close {
  void operator()(chmFile* oFile) const { chm_close(oFile); }
};
using OpenFile = std::unique_ptr<chmFile, Close>;

OpenFile Open(const std::string& sCHMPath) {
  if (sCHMPath.empty()) throw HelpError("No help file was named.");
  const std::string sPath = WithSlashes(sCHMPath);
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

/// The file of something in a folder of topics; empty if there is none. Nothing
/// outside the folder can be named.
std::filesystem::path FileIn(const std::string& sFolder, const std::string& sObject) {
  std::error_code oIgnored;
  const auto oFolder = std::filesystem::canonical(sFolder, oIgnored);
  if (sObject.empty() || sObject.find('\0') != std::string::npos) return {};
  const auto oFile = std::filesystem::canonical(oFolder / sObject, oIgnored);
  const auto [itFolder, itFile] = std::ranges::mismatch(oFolder, oFile);
  return itFolder == oFolder.end() && std::filesystem::is_regular_file(oFile, oIgnored) ? oFile
                                                                                        : std::filesystem::path();
}

bool IsFolder(const std::string& sCHMPath) {
  std::error_code oIgnored;
  return std::filesystem::is_directory(WithSlashes(sCHMPath), oIgnored);
}

}  // namespace

bool CompiledHelp::HasTopic(const std::string& sCHMPath, const std::string& sHelpID) {
  if (IsFolder(sCHMPath)) return !FileIn(WithSlashes(sCHMPath), sHelpID + ".htm").empty();
  try {
    return Find(*Open(sCHMPath), sHelpID + ".htm").has_value();
  } catch (const HelpError&) {
    return false;
  }
}

std::string CompiledHelp::Read(const std::string& sCHMPath, const std::string& sObject) {
  const auto NoTopic = [&] {
    return HelpError("The help file \"" + sCHMPath + "\" has no topic \"" + sObject + "\".");
  };
  if (IsFolder(sCHMPath)) {
    const auto oPath = FileIn(WithSlashes(sCHMPath), sObject);
    if (oPath.empty()) throw NoTopic();
    try {
      return ReadFile(oPath.string(), MaxBytes);
    } catch (const ReadFileError& oError) {
      throw HelpError("\"" + sObject + "\" in \"" + sCHMPath + "\" cannot be read: " + oError.what());
    }
  }
  const OpenFile oFile = Open(sCHMPath);
  auto oFound = Find(*oFile, sObject);
  if (!oFound) throw NoTopic();
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

}  // namespace ZELWbr3::CHM
