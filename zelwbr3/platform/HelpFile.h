#pragma once

#include <string>

namespace ZELWbr3 {

/// Compiled help files, as far as the control itself asks about them; a topic
/// is read by whoever shows it.
class HelpFile {
 public:
  virtual ~HelpFile() = default;

  /// The file at sCHMPath exists and has the page sHelpID + ".htm". A platform
  /// that cannot read help files knows of none.
  virtual bool HasTopic(const std::string& /*sCHMPath*/, const std::string& /*sHelpID*/) { return false; }
};

}  // namespace ZELWbr3
