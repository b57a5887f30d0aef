#pragma once

#include "zelwbr3/base/Checked.h"

#include <string>

namespace ZELWbr3::Host {

/// One step of a report's script.
struct Step {
  enum class Kind { Click, Key, Focus, Item, Show, Answer, Command, Print };

  Kind What;
  std::string Text;  ///< id, page name or answer
  Long Number;       ///< key code, item key or command

  /// Parses a step as written on the command line, such as "click ID" or
  /// "print". Throws std::invalid_argument, which names the step.
  static Step Parse(const std::string& sStep);
};

}  // namespace ZELWbr3::Host
