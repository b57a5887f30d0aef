#pragma once

#include "instances/sqlite/SQLiteDatabase.h"

namespace SQLiteFiles {

/// Opened so that each look reads afresh: for tests that change the file
/// between two looks.
inline auto OpenDatabase(const std::string& sPath, ZELWbr3::SQLite::Options oOptions = {}) {
  oOptions.ReadingLifetime = {};
  return ZELWbr3::SQLite::OpenDatabase(sPath, oOptions);
}

}  // namespace SQLiteFiles
