#pragma once

#include <string>

namespace ZELWbr3::Instances {

/// Where the analyzer of an instance keeps its protocol sets and its lock file.
/// One instance has one folder; it need not exist.
class AnalyzerFolder {
 public:
  /// sInstance is the absolute path of a database file, which has the same folder
  /// by all its names, or any other text, such as a server's address, which is
  /// taken literally. Raises std::runtime_error when the user has no home folder.
  explicit AnalyzerFolder(const std::string& sInstance);

  const std::string& Path() const { return m_sPath; }
  std::string LockPath() const { return m_sPath + "/analyzer.lock"; }

 private:
  std::string m_sPath;
};

}  // namespace ZELWbr3::Instances
