#pragma once

#include "zelwbr3/ZELLib3/Error.h"

#include <cstdint>
#include <map>
#include <string>

namespace ZELWbr3::Postgres {

class Connection;

/// Who the server is, and what the user may read there. Looked at once for each
/// connection.
struct Rights {
  /// The oldest that can be shown.
  static constexpr int OldestVersion = 100000;

  int Version = 0;          ///< 15.3 is 150003
  std::string VersionText;  ///< "PostgreSQL 15.3"
  std::string Platform;     ///< "x86_64-pc-linux-gnu"
  int PageSize = 0;         ///< bytes
  std::string ClusterName;  ///< empty unless configured
  int Port = 0;
  std::int64_t StartedOn = 0;    ///< seconds since 1970
  std::int64_t ConnectedOn = 0;  ///< the same, of this connection
  std::string DataDirectory;     ///< empty without the right to know it
  std::string SystemIdentifier;  ///< the same for a standby
  bool IsSuper = false;
  bool ReadsStats = false;     ///< has pg_read_all_stats, as pg_monitor has
  bool ReadsSettings = false;  ///< has pg_read_all_settings
  bool ListsWal = false;       ///< may call pg_ls_waldir
  /// Installed in the database: name and quoted schema.
  std::map<std::string, std::string> Extensions;

  /// Raises ZELLib3::InstanceError, also when the server is too old.
  static Rights Of(Connection& oConnection, const std::string& sServer);
};

}  // namespace ZELWbr3::Postgres
