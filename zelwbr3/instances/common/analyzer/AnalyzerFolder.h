#pragma once

#include <string>

namespace ZELWbr3::Instances {

/// Where the analyzer of an instance keeps its protocol sets and its lock file.
/// One instance has one folder; it need not exist.
class AnalyzerFolder {
 public:
  /// Of a database file, by its absolute path: the same by all its names. Raises
  /// std::runtime_error when the user has no home folder.
  explicit AnalyzerFolder(const std::string& sFile);
  /// Of another instance. sName is for people, who look into the folder;
  /// sIdentity tells two of the same name apart. Raises the same.
  AnalyzerFolder(const std::string& sName, const std::string& sIdentity);

  const std::string& Path() const { return m_sPath; }
  std::string LockPath() const { return m_sPath + "/analyzer.lock"; }

 private:
  std::string m_sPath;
};

}  // namespace ZELWbr3::Instances
