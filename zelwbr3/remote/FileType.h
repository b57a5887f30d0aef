#pragma once

#include <string>
#include <string_view>

namespace ZELWbr3::Remote {

/// The MIME type of a file by the ending of its name, in small or capital letters.
std::string FileType(std::string_view sName);

}  // namespace ZELWbr3::Remote
