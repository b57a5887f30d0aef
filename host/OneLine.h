#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Host {

/// A message as one line for standard error: control characters become blanks.
inline std::string OneLine(std::string_view sText) {
  std::string sLine(sText);
  for (char& c : sLine) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  }
  return sLine;
}

}  // namespace ZELWbr3::Host
