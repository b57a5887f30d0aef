#pragma once

#include "zelwbr3/ZELLib3/Parameter.h"
#include "zelwbr3/dom/Element.h"
#include "zelwbr3/platform/UserLocale.h"

#include <string>
#include <vector>

namespace ZELWbr3 {

/// One change of a parameter, as texts.
struct ParameterChange {
  std::string When;  ///< general date
  std::string Value;
  std::string NewValue;

  /// The history of a parameter. All of it is read before anything is shown,
  /// so that a failure on the way leaves no half of it behind.
  static std::vector<ParameterChange> ReadAll(const ZELLib3::Parameter& oParameter, const UserLocale& oLocale);

  /// Writes the three texts into a row's cells from iFirst on.
  void Write(const std::vector<Element*>& oCells, std::size_t iFirst) const;
};

}  // namespace ZELWbr3
