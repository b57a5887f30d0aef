#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::Instances {

/// The analyzer's configuration file: lines "GROUP = yes" or "GROUP = no" say
/// whether a group of figures is written. "#" begins a comment; a group that is
/// not named is written.
class AnalyzerConfig {
 public:
  /// An empty path is the default: everything is written. groups are those that
  /// there are. Raises std::runtime_error that names the file, and the line when
  /// one is wrong.
  static AnalyzerConfig Read(const std::string& sPath, const std::vector<std::string>& groups);

  bool Writes(std::string_view sGroup) const { return m_off.find(sGroup) == m_off.end(); }

 private:
  std::set<std::string, std::less<>> m_off;
};

}  // namespace ZELWbr3::Instances
