#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// What is sent to a server: one statement with the values of $1, $2, …, or several
/// without, separated by semicolons.
struct Statement {
  std::string SQL;
  std::vector<std::optional<std::string>> Values;
};

/// Told of each statement before it is sent, for traces and measurements.
using StatementObserver = std::function<void(const Statement&)>;

}  // namespace ZELWbr3::Postgres
