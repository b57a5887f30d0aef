#pragma once

#include "zelwbr3/instances/postgres/connection/Rights.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::Postgres {

/// A statement of the files in queries/, which are built in.
struct Query {
  std::string Name;
  int From = 0;           ///< first version, as Connection::Version
  int Below = 0;          ///< first version that needs another statement; 0 = none
  std::string Right;      ///< "stats", "super", or empty
  std::string Extension;  ///< that has what is read; empty = the server itself
  bool IsRecord = false;  ///< one row, shown as names and values
  std::string Title;
  std::string SQL;

  bool IsUsable(const Rights& oRights) const;
  /// The statement for this server.
  std::string For(const Rights& oRights) const;
};

namespace Queries {

const std::vector<Query>& All();
/// Null when the server is of a version that has no such figures, an extension is
/// missing, or the user has not the right.
const Query* Find(std::string_view sName, const Rights& oRights);
/// The usable ones whose names begin with sPrefix, in their order.
std::vector<const Query*> Usable(std::string_view sPrefix, const Rights& oRights);
/// A statement that every server and user can run.
const std::string& SQL(std::string_view sName);

}  // namespace Queries

}  // namespace ZELWbr3::Postgres
