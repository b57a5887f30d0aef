#pragma once

#include "zelwbr3/base/Export.h"

#include <string>

namespace ZELWbr3 {

/// What the control needs to know about compiled help files. The message window
/// reads the topics itself.
class ZELWBR3_EXPORT HelpFile {
 public:
  virtual ~HelpFile() = default;

  /// True if the file at sCHMPath exists and has the page sHelpID + ".htm". False
  /// on a platform that cannot read help files.
  virtual bool HasTopic(const std::string& /*sCHMPath*/, const std::string& /*sHelpID*/) { return false; }
};

}  // namespace ZELWbr3
