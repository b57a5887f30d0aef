#pragma once

#include "zelwbr3/instances/postgres/analyzer/Interval.h"

#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// Something that slows a server down, or will stop it.
struct Bottleneck {
  int Level;  ///< 1 notice, 2 warning, 3 act now
  std::string Name;
  std::string Text;
  double Value;

  /// Those at the moment and of the interval before it. Raises
  /// ZELLib3::InstanceError.
  static std::vector<Bottleneck> Find(Server& oServer, const Interval& oInterval);
};

}  // namespace ZELWbr3::Postgres
