#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Desktop {

/// A text as a string literal of a script. The text is valid UTF-8: WebKit
/// silently does not run a script that is not.
std::string ScriptText(std::string_view sText);

}  // namespace ZELWbr3::Desktop
