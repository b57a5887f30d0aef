#pragma once

#include "zelwbr3/ZELLib3/Analyzer.h"

#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// Reads the figures of protocol sets back: of each file with one line for an
/// evaluation the columns that hold numbers. A file that cannot be read, or is of
/// something else, counts as none; a line that is damaged, too.
///
/// sPath is the folder of the sets, days the names of those to read, oldest first.
std::vector<ZELLib3::Analyzer::Protocol> ReadProtocols(const std::string& sPath, const std::vector<std::string>& days);

}  // namespace ZELWbr3::Instances
