#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"

#include "zelwbr3/instances/common/UserFolder.h"
#include "zelwbr3/instances/common/analyzer/Hash.h"

#include <cctype>
#include <filesystem>

namespace ZELWbr3::Instances {

namespace {

namespace fs = std::filesystem;

/// The name without symbolic links. It stays the same when the file is gone, also
/// when a link leads to it.
fs::path Resolved(fs::path oPath) {
  std::error_code oIgnored;  // what cannot be resolved stays as it is
  for (int iLink = 0; iLink < 40 && fs::is_symlink(oPath, oIgnored); ++iLink) {
    oPath = oPath.parent_path() / fs::read_symlink(oPath, oIgnored);
  }
  const fs::path oResolved = fs::weakly_canonical(oPath, oIgnored);
  return oResolved.empty() ? oPath : oResolved;
}

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
  const fs::path oInstance = oName.is_absolute() ? Resolved(oName) : oName;
  m_sPath =
      UserFolder::State() + "/analyzer/" + Readable(oInstance.filename().string()) + "-" + Hash(oInstance.string());
}

}  // namespace ZELWbr3::Instances
