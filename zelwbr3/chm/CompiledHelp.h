#pragma once

#include "zelwbr3/platform/HelpFile.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace ZELWbr3::CHM {

/// A compiled help file or something in it cannot be read; the text, for users,
/// says which and why.
class HelpError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Compiled help files (.chm), read afresh each time: they are small, and
/// one may be replaced while the program runs. A folder that holds what such a file
/// is made of serves as well, for a program whose help was not compiled.
class CompiledHelp : public HelpFile {
 public:
  /// Topics, styles and pictures are far below it; what claims to be larger is
  /// a damaged file.
  static constexpr std::size_t MaxBytes = 64 << 20;

  bool HasTopic(const std::string& sCHMPath, const std::string& sHelpID) override;

  /// The content of something in the file by its path there, such as
  /// "5.htm" or "pictures/disk.png"; capital letters are like small ones.
  /// Throws HelpError, also when it has more than MaxBytes. Nothing outside
  /// the file can be named.
  static std::string Read(const std::string& sCHMPath, const std::string& sObject);
};

}  // namespace ZELWbr3::CHM
