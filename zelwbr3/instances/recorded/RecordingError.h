#pragma once

#include <stdexcept>
#include <string>

namespace ZELWbr3::Recorded {

/// A recording cannot be read or written. The message is one line: the file,
/// the path of the key where there is one, and what was expected there.
class RecordingError : public std::runtime_error {
 public:
  RecordingError(const std::string& sFile, const std::string& sWhere, const std::string& sWhat)
      : std::runtime_error(OneLine(sFile + ": " + (sWhere.empty() ? "" : sWhere + ": ") + sWhat)) {}

 private:
  static std::string OneLine(std::string sText) {
    for (char& cChar : sText) {
      const auto lCode = static_cast<unsigned char>(cChar);
      if (lCode < 0x20 || lCode == 0x7f) cChar = '?';
    }
    return sText;
  }
};

}  // namespace ZELWbr3::Recorded
