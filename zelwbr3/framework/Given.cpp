#include "zelwbr3/framework/Given.h"

#include "zelwbr3/ZELLib3/Error.h"

#include <string>

namespace ZELWbr3 {

// "... Given(...) [with Object = ZELLib3::Caches]", with or without "with".
void RaiseNotGiven(std::string_view sFunction) {
  constexpr std::string_view Before = "Object = ";
  const auto iBefore = sFunction.rfind(Before);
  if (iBefore != std::string_view::npos) sFunction.remove_prefix(iBefore + Before.size());
  sFunction = sFunction.substr(0, sFunction.find_first_of(";]"));
  if (const auto iScope = sFunction.rfind("::"); iScope != std::string_view::npos) sFunction.remove_prefix(iScope + 2);
  throw ZELLib3::InstanceError({0, "The instance answers null where it owes " + std::string(sFunction)});
}

}  // namespace ZELWbr3
