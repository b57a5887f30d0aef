#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/instances/recorded/format/RecordingError.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <memory>
#include <string>

namespace ZELWbr3::Recorded {

/// Opens a recording: an instance kept in one JSON file (docs/recordings.md).
///
/// The file is read and checked completely here, RecordingError otherwise; it
/// is not looked at again. What the instance then answers is the recording's,
/// or the default of an absent key. Operations change this opened copy only.
/// LastError reads as the recorded one from the start; where the recording has
/// none, a table that it does not hold leaves an error that names the table.
/// Objects obtained from the instance share its data and may outlive it; the
/// position in rows and lists belongs to the object that was opened.
ZELWBR3_EXPORT std::shared_ptr<ZELLib3::Database> OpenRecording(const std::string& sFile, CallObserver fnObserver = {});

}  // namespace ZELWbr3::Recorded
