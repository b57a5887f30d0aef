#pragma once

#include <filesystem>

namespace ZELWbr3::SQLite {

/// What the user's programs keep, by how long.
enum class UserFiles {
  Data,   ///< $XDG_DATA_HOME, otherwise ~/.local/share
  State,  ///< $XDG_STATE_HOME, otherwise ~/.local/state
};

/// This system's own folder among the user's files; it need not exist. Raises
/// std::runtime_error when the user has no home folder.
std::filesystem::path UserFolder(UserFiles eFiles);

}  // namespace ZELWbr3::SQLite
