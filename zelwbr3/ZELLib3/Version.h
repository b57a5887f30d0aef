#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// The kernel's version. Number, Release and BuildVersion are packed: major *
/// 16777216 + minor * 65536 + finer bytes, so 7.4 is 0x07040000. Number says
/// which rows of the pages the instance can fill.
class ZELWBR3_EXPORT Version {
 public:
  virtual ~Version() = default;

  /// For display.
  virtual std::string Text() const { return {}; }
  virtual Long Major() const { return 0; }
  virtual Long Minor() const { return 0; }
  virtual Long Number() const { return 0; }
  virtual Long Release() const { return 0; }
  virtual Long BuildVersion() const { return 0; }
};

}  // namespace ZELLib3
