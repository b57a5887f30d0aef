#pragma once

#include "zelwbr3/base/Export.h"

#include <memory>
#include <string_view>

namespace ZELWbr3 {

/// Raises ZELLib3::InstanceError; sFunction is the signature that names the class.
[[noreturn]] ZELWBR3_EXPORT void RaiseNotGiven(std::string_view sFunction);

/// A sub-object of an instance, which owes its pages every one but Analyzer:
/// "Given(oDatabase->Caches())->Total()". Raises ZELLib3::InstanceError, which names
/// it, for null.
template <class Object>
std::shared_ptr<Object> Given(std::shared_ptr<Object> oObject) {
  if (oObject == nullptr) RaiseNotGiven(__PRETTY_FUNCTION__);
  return oObject;
}

}  // namespace ZELWbr3
