#pragma once

#include <string>

namespace ZELWbr3::SQLite {

/// A file name may hold line breaks; an error text has one line.
inline std::string OneLine(std::string sText) {
  for (char& c : sText) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '?';
  }
  return sText;
}

}  // namespace ZELWbr3::SQLite
