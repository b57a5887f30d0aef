#pragma once

#include "zelwbr3/instances/recorded/format/Schema.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace ZELWbr3::Recorded {

/// An opened recording: what all objects of one instance share.
struct State {
  State(Json oChecked, CallObserver fnTold);

  /// The checked file. Operations change it, and nothing else does.
  Json oRoot;
  CallObserver fnObserver;
  std::unordered_set<std::string> oFails;
  std::unordered_set<std::string> oRaises;
  ZELLib3::Error oRecordedError;
  ZELLib3::Error oLastError;
  /// Index of a parameter among the items by its name without blanks around
  /// it, which is how the pages ask for it.
  std::unordered_map<std::string, std::size_t> oParameters;

  /// An operation fails for a reason of its own; the recorded error, where
  /// there is one, goes before.
  void FailedBecause(const std::string& sReason);
};

}  // namespace ZELWbr3::Recorded
