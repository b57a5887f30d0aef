#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace ZELWbr3::Instances {

/// A user of the operating system.
struct SystemUser {
  std::string Name;
  std::string Home;

  /// No value for a number that no user has. From any thread.
  static std::optional<SystemUser> Of(uid_t lUser);
};

}  // namespace ZELWbr3::Instances
