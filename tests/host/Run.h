#pragma once

#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// How a program ended and what it said.
struct Ended {
  int Exit = -1;  ///< 128 and the signal's number when one ended it
  std::string Out;
  std::string Err;
};

/// Runs a program with arguments, and with "NAME=value" on top of this
/// process's environment. One that does not end within a minute is ended, which
/// shows in Exit.
Ended RunProgram(const std::string& sProgram, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment = {});

}  // namespace ZELWbr3::Testing
