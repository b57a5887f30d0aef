#pragma once

#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// What zelview remembers of its user, in $XDG_CONFIG_HOME/zelview/settings.json. It
/// holds no password.
struct Settings {
  /// Instances as on the command line, the last one opened first.
  std::vector<std::string> Recent;
  int Width = 1180;
  int Height = 860;
  std::string Page = "Main";
  int Unit = 4;
  std::string Theme;  ///< "light" or "dark"; empty for that of the desktop

  /// Puts an instance in front of the recent ones, without its password. A file is
  /// named by its whole path.
  void Opened(const std::string& sInstance);

  /// As they were saved last. What is missing or makes no sense is as at first; a
  /// file that cannot be read counts as none.
  static Settings Load();
  /// Throws std::runtime_error that names the file.
  void Save() const;

  static constexpr std::size_t kMostRecent = 12;
};

}  // namespace ZELWbr3::Host
