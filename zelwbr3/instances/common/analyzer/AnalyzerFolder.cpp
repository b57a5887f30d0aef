#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"

#include "zelwbr3/instances/common/ResolveLinks.h"
#include "zelwbr3/instances/common/UserFolder.h"
#include "zelwbr3/instances/common/analyzer/Hash.h"

#include <cctype>
#include <filesystem>

namespace ZELWbr3::Instances {

namespace {

namespace fs = std::filesystem;

/// The part of the folder's name that a person reads; the hash makes it unique.
std::string Readable(std::string sName) {
  for (char& c : sName) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '.' && c != '-') c = '_';
  }
  return sName.substr(0, 64);
}

}  // namespace

AnalyzerFolder::AnalyzerFolder(const std::string& sInstance) {
  const fs::path oName(sInstance);
  const fs::path oInstance = oName.is_absolute() ? fs::path(ResolveLinks(sInstance)) : oName;
  m_sPath =
      UserFolder::State() + "/analyzer/" + Readable(oInstance.filename().string()) + "-" + Hash(oInstance.string());
}

}  // namespace ZELWbr3::Instances
