#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/instances/recorded/format/RecordingError.h"
#include "zelwbr3/instances/recorded/writing/RecordOptions.h"

#include <string>
#include <vector>

namespace ZELWbr3::Recorded {

/// Writes everything that an instance of any kind answers to a file which
/// OpenRecording opens, replacing the file in one step: after an error the old
/// one is still there. Calls no operation that changes the instance.
///
/// A member that raises is left out and listed in "raises", an operation that
/// fails in "fails"; LastError is that of the first failure. Texts that are not
/// UTF-8 get U+FFFD for what is wrong, a missing date or a number that is not
/// finite is left out.
///
/// Answers notes, one line each, on what the file cannot say: rows beyond the
/// bound, or a member that raised for some objects of its kind only. Raises
/// RecordingError when the file cannot be written.
ZELWBR3_EXPORT std::vector<std::string> WriteRecording(ZELLib3::Database& oDatabase, const std::string& sFile,
                                                       const RecordOptions& oOptions = {});

}  // namespace ZELWbr3::Recorded
