#pragma once

#include <cstdint>
#include <string>

namespace ZELWbr3 {

/// A size for a sentence, such as "740 MB" or "1.2 GB"; a KB is 1,024 bytes.
std::string SizeText(std::int64_t lBytes);

}  // namespace ZELWbr3
