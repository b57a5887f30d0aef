#pragma once

#include <sys/utsname.h>

namespace ZELWbr3::Instances {

/// What this machine and its system are called.
inline utsname ThisSystem() {
  utsname oSystem{};
  uname(&oSystem);
  return oSystem;
}

}  // namespace ZELWbr3::Instances
