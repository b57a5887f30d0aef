#pragma once

#include <string_view>

namespace ZELWbr3::Postgres {

/// The texts of the files in queries/, one after the other.
extern const std::string_view QueryFiles;

}  // namespace ZELWbr3::Postgres
