#pragma once

#include <optional>
#include <string>

namespace ZELWbr3::Headless {

/// The bytes of a file; no value when it cannot be read.
std::optional<std::string> ReadFile(const std::string& sPath);

}  // namespace ZELWbr3::Headless
