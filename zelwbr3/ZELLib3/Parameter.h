#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// One configuration parameter with its change history.
class ZELWBR3_EXPORT Parameter {
 public:
  virtual ~Parameter() = default;

  virtual std::string Name() const { return {}; }
  virtual std::string Value() const { return {}; }
  virtual std::string Description() const { return {}; }
  virtual std::string Explanation() const { return {}; }
  /// 0 general, 1 extended, 2 support, 3 info; any other none.
  virtual Long Group() const { return 0; }
  /// Becomes active at the next restart.
  virtual std::string NewValue() const { return {}; }
  /// The pending value where a change is possible online.
  virtual std::string NewValueOnline() const { return {}; }
  virtual Long HistoryCount() const { return 0; }
  /// Entries count from 1; an index out of bounds raises std::out_of_range.
  virtual Date HistoryDate(Long) const { throw std::out_of_range("The parameter has no history"); }
  virtual std::string HistoryValue(Long) const { throw std::out_of_range("The parameter has no history"); }
  virtual std::string HistoryNewValue(Long) const { throw std::out_of_range("The parameter has no history"); }
  virtual bool Exists() const { return false; }
};

}  // namespace ZELLib3
