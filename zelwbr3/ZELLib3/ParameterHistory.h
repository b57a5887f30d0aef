#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// The changes of all parameters. Open goes to the first entry; MoveNext returns
/// false at the end. Without a current entry, its members are empty.
class ZELWBR3_EXPORT ParameterHistory {
 public:
  virtual ~ParameterHistory() = default;

  virtual bool Open() { return true; }
  /// There is a current entry.
  virtual bool HasEntry() const { return false; }
  virtual bool MoveNext() { return false; }

  /// The current entry's members.
  virtual ZELWbr3::Date Date() const { return {}; }
  virtual std::string Parameter() const { return {}; }
  virtual std::string Value() const { return {}; }
  virtual std::string NewValue() const { return {}; }
  virtual std::string Text() const { return {}; }
};

}  // namespace ZELLib3
