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

  /// The history of a parameter. It is read completely before anything is shown,
  /// so that an error does not leave half of it on the page.
  static std::vector<ParameterChange> ReadAll(const ZELLib3::Parameter& oParameter, const UserLocale& oLocale);

  /// Writes the three texts into a row's cells from iFirst on.
  void Write(const std::vector<Element*>& oCells, std::size_t iFirst) const;
};

}  // namespace ZELWbr3
