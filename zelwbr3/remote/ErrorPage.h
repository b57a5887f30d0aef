#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Remote {

/// The page, as HTML, that stands where a document cannot be shown: what was
/// asked for and why it is not there. Both are plain text from anywhere.
/// sStyle stands in its head.
std::string ErrorPage(std::string_view sAsked, std::string_view sReason, std::string_view sStyle = {});

/// The page's style sheet, which stands in the page unless ErrorPage gets another
/// style.
extern const std::string_view ErrorPageStyle;

}  // namespace ZELWbr3::Remote
