#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace ZELWbr3::Recorded {

/// One operation that was called on an opened recording.
struct Call {
  using Argument = std::variant<std::string, std::int32_t, bool>;

  std::string Name;  ///< such as "Analyzer.Start", "SysInfo.Open", "Shutdown"
  /// In the order of the operation's own arguments; a date as
  /// "YYYY-MM-DDTHH:MM:SS".
  std::vector<Argument> Arguments;
  /// The operation changes the instance: it starts, stops, deletes or switches
  /// something. The others only read.
  bool Changes = false;
};

/// Told of every operation, in order and before it takes effect, one that
/// fails or raises included.
using CallObserver = std::function<void(const Call&)>;

}  // namespace ZELWbr3::Recorded
