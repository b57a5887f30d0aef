#pragma once

#include "zelwbr3/ZELLib3/Parameter.h"
#include "zelwbr3/base/Export.h"

#include <memory>

namespace ZELLib3 {

/// The configuration parameters.
class ZELWBR3_EXPORT Parameters {
 public:
  virtual ~Parameters() = default;

  virtual Long Count() const { return 0; }
  /// 1 to Count; std::out_of_range otherwise.
  virtual std::shared_ptr<Parameter> Item(Long) const { throw std::out_of_range("There are no parameters"); }
  /// Never null: an unknown name gives a parameter that does not exist.
  virtual std::shared_ptr<Parameter> Item(const std::string&) const { return std::make_shared<Parameter>(); }

  /// The two calls that fetch the list, in this order.
  virtual bool Load() { return true; }
  virtual bool Read() { return true; }
};

}  // namespace ZELLib3
