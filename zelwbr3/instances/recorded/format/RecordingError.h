#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/base/Text.h"

#include <stdexcept>
#include <string>

namespace ZELWbr3::Recorded {

/// A recording cannot be read or written. The message is one line: the file,
/// the path of the key where there is one, and what was expected there.
class ZELWBR3_EXPORT RecordingError : public std::runtime_error {
 public:
  RecordingError(const std::string& sFile, const std::string& sWhere, const std::string& sWhat)
      : std::runtime_error(Text::OneLine(sFile + ": " + (sWhere.empty() ? "" : sWhere + ": ") + sWhat)) {}
};

}  // namespace ZELWbr3::Recorded
