#pragma once

#include <string>

namespace ZELWbr3::Instances {

/// Where the analyzer of a database file keeps its protocol sets and its lock
/// file. One file has one folder, whatever name it is reached by; it need not
/// exist.
class AnalyzerFolder {
 public:
  /// Raises std::runtime_error when the user has no home folder.
  explicit AnalyzerFolder(const std::string& sDatabase);

  const std::string& Path() const { return m_sPath; }
  std::string LockPath() const { return m_sPath + "/analyzer.lock"; }

 private:
  std::string m_sPath;
};

}  // namespace ZELWbr3::Instances
