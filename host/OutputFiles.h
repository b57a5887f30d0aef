#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::Host {

/// A file that a program is told to write; an empty name is none.
struct OutputFile {
  std::string_view Option;  ///< as the user wrote it: "--out"
  std::string File;
};

/// Looks at the files to be written before anything is done, so that a mistake
/// costs nothing. Throws std::invalid_argument that names the option and the
/// file when it cannot be written, is one that the instance itself consists of,
/// or is written by another option, too. Creates and changes nothing.
void CheckOutputFiles(const std::string& sInstance, const std::vector<OutputFile>& files);

/// Replaces what the file contains, in one step: after an error the old file is
/// still there. Throws std::runtime_error, which names the file.
void WriteFile(const std::string& sFile, std::string_view sBytes);

}  // namespace ZELWbr3::Host
