#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Host {

/// A text as one line, for standard error or a status line: control characters
/// and Unicode's own line and paragraph ends become blanks.
inline std::string OneLine(std::string_view sText) {
  std::string sLine(sText);
  for (char& c : sLine) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  }
  for (const std::string_view sEnd : {"\xE2\x80\xA8", "\xE2\x80\xA9"}) {
    for (auto i = sLine.find(sEnd); i != std::string::npos; i = sLine.find(sEnd, i)) sLine.replace(i, sEnd.size(), " ");
  }
  return sLine;
}

}  // namespace ZELWbr3::Host
