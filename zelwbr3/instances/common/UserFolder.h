#pragma once

#include <string>

namespace ZELWbr3::Instances {

/// Where this program keeps files of a user.
struct UserFolder {
  /// $XDG_DATA_HOME, or ~/.local/share, then zelwbr3. Raises
  /// std::runtime_error when the user has no home folder.
  static std::string Data();
  /// $XDG_STATE_HOME, or ~/.local/state, then zelwbr3. As Data.
  static std::string State();
};

}  // namespace ZELWbr3::Instances
