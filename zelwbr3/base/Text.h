#pragma once

#include "zelwbr3/base/Export.h"

#include <string>
#include <string_view>

namespace ZELWbr3::Text {

/// The text as a document can hold it: each NUL and each maximal invalid UTF-8
/// sequence becomes U+FFFD. A clean text is only copied.
ZELWBR3_EXPORT std::string Clean(std::string_view sText);

/// The text without the blanks at both ends. sBlanks lists the characters that
/// count as blanks; tabs and line ends do not unless they are listed.
ZELWBR3_EXPORT std::string Trim(std::string_view sText, std::string_view sBlanks = " ");

/// The text as one line, for a message or a status line: control characters and
/// Unicode line and paragraph separators become blanks.
ZELWBR3_EXPORT std::string OneLine(std::string_view sText);

/// A name for use in a sentence of our own. If it contains right-to-left
/// characters or bidirectional controls, it is isolated (U+2068, U+2069), so that
/// it does not affect the text around it.
ZELWBR3_EXPORT std::string Isolated(std::string_view sName);

/// Escaped for an HTML text or a double-quoted attribute value.
ZELWBR3_EXPORT std::string EscapeHTML(std::string_view sText);

/// A field of a CSV file (RFC 4180): quoted if it contains a quotation mark, a comma
/// or a line end.
ZELWBR3_EXPORT std::string CSVField(std::string sText);

/// Appends the UTF-8 form of a code point; surrogates and values beyond
/// U+10FFFF become U+FFFD.
ZELWBR3_EXPORT void AppendCodePoint(std::string& sText, char32_t lCodePoint);

}  // namespace ZELWbr3::Text
