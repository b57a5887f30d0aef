#include "zelwbr3/instances/sqlite/SQLiteVersion.h"

#include <sqlite3.h>

namespace ZELWbr3::SQLite {

std::string SQLiteVersion::Text() const { return std::string("SQLite ") + sqlite3_libversion(); }

}  // namespace ZELWbr3::SQLite
