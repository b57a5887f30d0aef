#pragma once

#include "zelwbr3/base/Export.h"

#include <functional>
#include <string>

namespace ZELWbr3::SQLite {

/// How far the making has come, in percent, never falling. What it raises
/// breaks the making off and reaches the caller.
using SampleProgress = std::function<void(int iPercent)>;

/// Where the sample database of this user stands: $XDG_DATA_HOME, or
/// ~/.local/share, then zelwbr3/sample.db. Raises std::runtime_error when the
/// user has no home folder.
ZELWBR3_EXPORT std::string SamplePath();

/// Makes the sample database, a trading company's with some hundred thousand
/// rows, always the same ones, in WAL mode with a log and free pages; folders
/// that are missing as well. A file that is there already is left alone.
///
/// The file appears under its name when it is complete. Of several processes
/// one makes it and the others wait for that one, a minute at most. Raises
/// ZELLib3::InstanceError or std::system_error that names the file.
ZELWBR3_EXPORT void MakeSample(const std::string& sPath, const SampleProgress& oProgress = {});

}  // namespace ZELWbr3::SQLite
