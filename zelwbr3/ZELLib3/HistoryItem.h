#pragma once

#include "zelwbr3/ZELLib3/Error.h"

#include <vector>

namespace ZELLib3 {

/// One entry of the backup history.
struct HistoryItem {
  struct Field {
    std::string Name;
    std::string Value;
  };

  std::string Label;
  std::string Action;
  Long Kind;  ///< 1 complete data, 2 incremental data, 3 log, 4 other
  ZELWbr3::Date Date;
  Long ReturnCode;  ///< 0 = done
  std::string ErrorText;
  std::vector<Field> Fields;
};

}  // namespace ZELLib3
