#pragma once

#include "zelwbr3/base/Export.h"

#include <cstdint>
#include <string>

namespace ZELWbr3 {

/// A size for a sentence, such as "740 MB" or "1.2 GB"; a KB is 1,024 bytes.
ZELWBR3_EXPORT std::string SizeText(std::int64_t lBytes);

}  // namespace ZELWbr3
