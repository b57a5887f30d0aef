#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

#include <optional>

namespace ZELLib3 {

/// One session; the name and the five fields are the cells of its row.
class ZELWBR3_EXPORT Session {
 public:
  virtual ~Session() = default;

  virtual Long Index() const { return 0; }
  virtual std::string Name() const { return {}; }
  virtual std::string Field1() const { return {}; }
  virtual std::string Field2() const { return {}; }
  virtual std::string Field3() const { return {}; }
  virtual std::string Field4() const { return {}; }
  virtual std::string Field5() const { return {}; }

  /// Whether it does something, or waits while it does; none if that is not known.
  virtual std::optional<bool> IsActive() const { return {}; }
  /// What there is to say beside its row, such as its statement; empty if that is not
  /// known.
  virtual std::string Detail() const { return {}; }
};

}  // namespace ZELLib3
