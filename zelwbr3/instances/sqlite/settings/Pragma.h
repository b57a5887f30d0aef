#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/instances/common/settings/ParameterList.h"

#include <optional>
#include <span>
#include <string>

namespace ZELWbr3::SQLite {

class Connection;

/// A pragma that is a setting: it has a value that stays until it is changed.
struct Pragma {
  using Group = Instances::ParameterList::Group;
  /// Who keeps the value.
  enum class Keeper {
    File,        ///< the database file, for all connections
    Connection,  ///< each connection for itself, so this one's is shown
    Process,     ///< the library in this process
  };
  /// What stands for the numbers 0, 1, ….
  enum class Words { None, Switch, Vacuum, Synchronous, TempStore, SecureDelete };

  const char* Name;
  Group InGroup;
  Keeper KeptBy;
  Words SpelledAs;
  const char* Description;
  const char* Explanation;

  static std::span<const Pragma> All();

  /// No value when the library does not know the pragma. Raises
  /// ZELLib3::InstanceError.
  std::optional<std::string> Read(Connection& oConnection) const;
  /// What holds for a connection that is opened next; the same as sValue when
  /// no change is waiting, as far as this connection can know. Raises
  /// ZELLib3::InstanceError.
  std::string ReadNext(Connection& oConnection, const std::string& sValue) const;
  /// Explanation, and who keeps the value.
  std::string FullExplanation() const;
};

}  // namespace ZELWbr3::SQLite
