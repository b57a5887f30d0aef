#pragma once

#include "zelwbr3/base/Export.h"

#include <string>
#include <string_view>

namespace ZELWbr3::Web {

/// 256 bits of the system's generator, as 43 characters of a URL. Throws
/// std::runtime_error when it gives none.
ZELWBR3_EXPORT std::string MakeSecret();
/// Compares in a time that does not tell where two texts differ.
bool IsSameSecret(std::string_view sText, std::string_view sOther);
/// The first 128 bits of a text's SHA-256, in hexadecimal.
std::string Digest(std::string_view sText);

}  // namespace ZELWbr3::Web
