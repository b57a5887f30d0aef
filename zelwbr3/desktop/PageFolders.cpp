#include "zelwbr3/desktop/PageFolders.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/remote/FileURL.h"

#include <filesystem>
#include <string_view>

namespace ZELWbr3::Desktop {

namespace {

namespace fs = std::filesystem;

/// The URL of a file that a page names; empty if the file is beside the page, or
/// nowhere, or the name is no relative path.
std::string Elsewhere(const fs::path& oPage, const std::string& sName, const std::vector<std::string>& folders) {
  std::error_code oIgnored;
  const bool bRelative = !sName.empty() && Remote::SchemeOf(sName).empty() && sName.find_first_of("/#?&") != 0;
  if (!bRelative || fs::exists(oPage.parent_path() / sName, oIgnored)) return {};
  for (const std::string& sFolder : folders) {
    const fs::path oFile = fs::path(sFolder) / sName;
    if (fs::exists(oFile, oIgnored)) return Remote::MakeURL(oFile.string());
  }
  return {};
}

}  // namespace

std::optional<std::string> WithFolders(const std::string& sPage, const std::vector<std::string>& folders) {
  std::string sHTML;
  try {
    sHTML = ReadFile(sPage);
  } catch (const ReadFileError&) {
    return std::nullopt;  // the browser says so
  }
  bool bReplaced = false;
  for (const std::string_view sAttribute : {" href=\"", " src=\""}) {
    for (auto i = sHTML.find(sAttribute); i != std::string::npos; i = sHTML.find(sAttribute, i)) {
      i += sAttribute.size();
      const auto iEnd = sHTML.find('"', i);
      if (iEnd == std::string::npos) break;
      const std::string sURL = Elsewhere(sPage, sHTML.substr(i, iEnd - i), folders);
      if (sURL.empty()) continue;
      sHTML.replace(i, iEnd - i, sURL);
      bReplaced = true;
    }
  }
  return bReplaced ? std::optional(std::move(sHTML)) : std::nullopt;
}

}  // namespace ZELWbr3::Desktop
