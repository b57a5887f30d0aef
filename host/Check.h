#pragma once

#include <iosfwd>
#include <string>

namespace ZELWbr3::Host {

/// Examines an instance and writes one line: in the format of monitoring plugins,
/// with performance data, or as JSON. Returns what such a plugin exits with: 0 in
/// order, 1 warning, 2 critical, 3 unknown, also when the instance cannot be opened
/// or read, which the line then says.
int Check(const std::string& sInstance, bool bJSON, std::ostream& oOut);

}  // namespace ZELWbr3::Host
