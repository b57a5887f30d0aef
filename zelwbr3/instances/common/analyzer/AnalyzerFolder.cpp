#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"

#include "zelwbr3/instances/common/UserFolder.h"
#include "zelwbr3/instances/common/analyzer/Hash.h"

#include <cctype>
#include <filesystem>

namespace ZELWbr3::Instances {

namespace {

namespace fs = std::filesystem;

/// The name without symbolic links. That of a file which is gone is the same as
/// when it was there, also behind a link of its own.
fs::path Resolved(fs::path oPath) {
  std::error_code oIgnored;  // what cannot be resolved stays as it is
  for (int iLink = 0; iLink < 40 && fs::is_symlink(oPath, oIgnored); ++iLink) {
    oPath = oPath.parent_path() / fs::read_symlink(oPath, oIgnored);
  }
  const fs::path oResolved = fs::weakly_canonical(oPath, oIgnored);
  return oResolved.empty() ? oPath : oResolved;
}

/// What tells a person which file it is: the hash tells the files apart.
std::string Readable(std::string sName) {
  for (char& c : sName) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '.' && c != '-') c = '_';
  }
  return sName.substr(0, 64);
}

}  // namespace

AnalyzerFolder::AnalyzerFolder(const std::string& sDatabase) {
  const fs::path oDatabase = Resolved(fs::absolute(sDatabase));
  m_sPath =
      UserFolder::State() + "/analyzer/" + Readable(oDatabase.filename().string()) + "-" + Hash(oDatabase.string());
}

}  // namespace ZELWbr3::Instances
