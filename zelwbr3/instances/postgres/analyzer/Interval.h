#pragma once

#include "zelwbr3/instances/postgres/server/Server.h"

#include <map>
#include <string>

namespace ZELWbr3::Postgres {

/// What the server has counted up to a moment, by the names of the counters'
/// queries. A counter that this version or user has not is missing.
struct Counters {
  Waiter::Clock::time_point At;
  std::string Resets;  ///< when counting began
  std::map<std::string, double> Values;

  /// Raises ZELLib3::InstanceError.
  static Counters Read(Server& oServer);
};

/// What happened between two evaluations.
class Interval {
 public:
  /// Nothing is known when the counters began anew in between.
  Interval(const Counters& oBefore, const Counters& oNow);
  /// Nothing is known.
  Interval() = default;

  bool Has(const char* sCounter) const { return m_counts.contains(sCounter); }
  /// 0 when it is not known.
  double Count(const char* sCounter) const;
  /// A second.
  double Rate(const char* sCounter) const;
  /// Pages found in the cache; 100 without accesses.
  double HitPercent() const;

 private:
  double m_dSeconds = 0;
  std::map<std::string, double> m_counts;
};

/// A number with up to three decimals.
std::string NumberText(double dValue);

}  // namespace ZELWbr3::Postgres
