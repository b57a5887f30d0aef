#include "zelwbr3/instances/common/ResolveLinks.h"

#include <filesystem>

namespace ZELWbr3::Instances {

std::string ResolveLinks(const std::string& sPath) {
  namespace fs = std::filesystem;
  constexpr int kMostLinks = 40;  // as many as the system follows
  std::error_code oIgnored;
  fs::path oPath = fs::absolute(sPath, oIgnored);
  for (int iLink = 0; iLink < kMostLinks && fs::is_symlink(oPath, oIgnored); ++iLink) {
    oPath = oPath.parent_path() / fs::read_symlink(oPath, oIgnored);
  }
  const fs::path oResolved = fs::weakly_canonical(oPath, oIgnored);
  return (oResolved.empty() ? oPath : oResolved).string();
}

}  // namespace ZELWbr3::Instances
