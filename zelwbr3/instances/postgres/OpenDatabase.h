#pragma once

#include "zelwbr3/base/Export.h"

#include <memory>
#include <string_view>

namespace ZELLib3 {
class Database;
}

namespace ZELWbr3::Postgres {

struct Options;

/// Opens a PostgreSQL server, 10 and later. sAddress is in libpq's words. Raises
/// ZELLib3::InstanceError, with one line that names the server and what is wrong,
/// when it cannot be reached and nothing is known about it; PasswordNeeded
/// (connection/ServerError.h) when only a password is missing. A server that is
/// stopped, starts or stops opens and says so in its state.
ZELWBR3_EXPORT std::shared_ptr<ZELLib3::Database> OpenDatabase(std::string_view sAddress);
ZELWBR3_EXPORT std::shared_ptr<ZELLib3::Database> OpenDatabase(std::string_view sAddress, const Options& oOptions);

}  // namespace ZELWbr3::Postgres
