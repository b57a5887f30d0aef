#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"

#include "zelwbr3/instances/common/ResolveLinks.h"
#include "zelwbr3/instances/common/UserFolder.h"
#include "zelwbr3/instances/common/analyzer/Hash.h"

#include <cctype>
#include <filesystem>

namespace ZELWbr3::Instances {

namespace {

/// The part of the folder's name that a person reads; the hash makes it unique.
std::string Readable(std::string sName) {
  for (char& c : sName) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '.' && c != '-') c = '_';
  }
  return sName.substr(0, 64);
}

}  // namespace

AnalyzerFolder::AnalyzerFolder(const std::string& sName, const std::string& sIdentity)
    : m_sPath(UserFolder::State() + "/analyzer/" + Readable(sName) + "-" + Hash(sIdentity)) {}

AnalyzerFolder::AnalyzerFolder(const std::string& sFile)
    : AnalyzerFolder(std::filesystem::path(ResolveLinks(sFile)).filename().string(), ResolveLinks(sFile)) {}

}  // namespace ZELWbr3::Instances
