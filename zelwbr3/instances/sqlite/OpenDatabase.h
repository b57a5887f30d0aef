#pragma once

#include "zelwbr3/base/Export.h"

#include <memory>
#include <string>

namespace ZELLib3 {
class Database;
}

namespace ZELWbr3::SQLite {

struct Options;

/// Opens an existing database file. Raises ZELLib3::InstanceError, with one line
/// that names the file and what is wrong, for a file that is missing, unreadable or
/// not a database. A file that is locked, or has to be recovered first, opens and
/// says so in its state.
ZELWBR3_EXPORT std::shared_ptr<ZELLib3::Database> OpenDatabase(const std::string& sPath);
ZELWBR3_EXPORT std::shared_ptr<ZELLib3::Database> OpenDatabase(const std::string& sPath, const Options& oOptions);

}  // namespace ZELWbr3::SQLite
