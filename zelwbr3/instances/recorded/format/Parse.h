#pragma once

#include "zelwbr3/instances/recorded/format/Schema.h"

namespace ZELWbr3::Recorded {

/// The JSON value that a file holds. RecordingError when there is no such file
/// or it is not a regular one, cannot be read, or is not UTF-8 JSON; a number
/// that no type can hold, a key that is given twice and a nesting deeper than
/// any recording are errors too, named by their path.
Json ParseFile(const std::string& sFile);

}  // namespace ZELWbr3::Recorded
