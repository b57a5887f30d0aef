#pragma once

#include "zelwbr3/base/Export.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace ZELWbr3 {

/// Why a file cannot be read; the message does not name the file.
class ReadFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The bytes of a regular file. Raises ReadFileError if the file is missing,
/// cannot be read, is not a regular file (reading a pipe or a device might never
/// end) or has more than lMost bytes.
ZELWBR3_EXPORT std::string ReadFile(const std::string& sPath, std::uintmax_t lMost = std::uintmax_t{1} << 30);

}  // namespace ZELWbr3
