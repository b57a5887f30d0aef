#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Text {

/// The text as a document can hold it: NULs and every maximal invalid UTF-8
/// sequence become U+FFFD. A text that is clean already is only copied.
std::string Clean(std::string_view sText);

/// The text without the blanks (only those) at both ends.
std::string Trim(std::string_view sText);

/// Escaped for an HTML text or a double-quoted attribute value.
std::string EscapeHTML(std::string_view sText);

/// Appends the UTF-8 form of a code point; surrogates and values beyond
/// U+10FFFF become U+FFFD.
void AppendCodePoint(std::string& sText, char32_t lCodePoint);

}  // namespace ZELWbr3::Text
