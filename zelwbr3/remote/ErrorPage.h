#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Remote {

/// The page, as HTML, that stands where a document cannot be shown: what was
/// asked for and why it is not there. Both are plain text from anywhere.
std::string ErrorPage(std::string_view sAsked, std::string_view sReason);

}  // namespace ZELWbr3::Remote
