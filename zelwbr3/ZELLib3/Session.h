#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// One session; the six texts are the cells of its row.
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
};

}  // namespace ZELLib3
