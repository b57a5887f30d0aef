#pragma once

#include "zelwbr3/instances/common/daemon/EvaluatedInstance.h"
#include "zelwbr3/instances/postgres/analyzer/Interval.h"

#include <memory>
#include <optional>
#include <vector>

namespace ZELWbr3::Postgres {

/// The evaluations of a server, one after the other: what it counts is told as what
/// happened since the one before.
class ServerEvaluations {
 public:
  /// Begins one. It is the same server each time.
  void Begin(std::shared_ptr<Server> oServer);
  /// The groups of figures. Rates are per second; the first evaluation has none,
  /// nor has one after the counters were reset. Sizes are bytes, times seconds.
  static std::vector<Instances::FigureGroup> Groups(const std::shared_ptr<ServerEvaluations>& oEvaluations);

 private:
  using Lines = Instances::FigureGroup::Lines;

  const Interval& SinceLast();
  Lines Sessions();
  Lines Load();
  Lines IO();
  Lines Standby();
  Lines Bottlenecks();

  std::shared_ptr<Server> m_oServer;
  std::optional<Counters> m_oLast;
  std::optional<Interval> m_oInterval;  ///< up to this evaluation, once it is read
};

}  // namespace ZELWbr3::Postgres
