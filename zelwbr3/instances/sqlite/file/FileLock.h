#pragma once

#include <cstdint>

/// The bytes of a database file on which the library puts its locks: at 1 GB,
/// in a page that is never used.
namespace ZELWbr3::SQLite::FileLock {

/// Held by a writer that waits for the readers to leave, and lets no new ones in.
constexpr std::int64_t Pending = 0x40000000;
constexpr std::int64_t Reserved = Pending + 1;
constexpr std::int64_t Shared = Pending + 2;
constexpr std::int64_t SharedEnd = Shared + 509;

}  // namespace ZELWbr3::SQLite::FileLock
