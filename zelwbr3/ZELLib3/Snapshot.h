#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// The instance's snapshot.
class ZELWBR3_EXPORT Snapshot {
 public:
  virtual ~Snapshot() = default;

  virtual std::string ID() const { return {}; }
  virtual Date Created() const { return {}; }
  virtual bool Exists() const { return false; }
  /// In pages.
  virtual Long Size() const { return 0; }
};

}  // namespace ZELLib3
