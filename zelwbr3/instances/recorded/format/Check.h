#pragma once

#include "zelwbr3/instances/recorded/format/Schema.h"

namespace ZELWbr3::Recorded {

/// Checks a whole file against the interfaces: RecordingError names the path
/// of the first value that is not what was expected. A list that is given as
/// an array becomes an object with its "Items", so that readers meet one form.
void CheckRecording(Json& oRoot, const std::string& sFile);

}  // namespace ZELWbr3::Recorded
