#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Text {

/// The text as a document can hold it: NULs and every maximal invalid UTF-8
/// sequence become U+FFFD. A text that is clean already is only copied.
std::string Clean(std::string_view sText);

/// The text without the blanks at both ends; only those, unless other characters
/// are named.
std::string Trim(std::string_view sText, std::string_view sBlanks = " ");

/// The text as one line, for a message or a status line: control characters and
/// Unicode's own ends of lines and paragraphs become blanks.
std::string OneLine(std::string_view sText);

/// Escaped for an HTML text or a double-quoted attribute value.
std::string EscapeHTML(std::string_view sText);

/// Appends the UTF-8 form of a code point; surrogates and values beyond
/// U+10FFFF become U+FFFD.
void AppendCodePoint(std::string& sText, char32_t lCodePoint);

}  // namespace ZELWbr3::Text
