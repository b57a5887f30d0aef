#include "zelwbr3/pages/monitor/ListLink.h"

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modFormat.h"

#include <stdexcept>

namespace ZELWbr3::ListLink {

namespace {

constexpr const char* Prefix = "ITEM";

}  // namespace

std::string ID(Long lIndex) { return Prefix + std::to_string(lIndex); }

std::optional<Long> Index(std::string_view sID) {
  std::string sRest;
  if (!modCells::AfterPrefix(Prefix, sID, sRest)) return std::nullopt;
  try {
    return modFormat::ToLong(modFormat::Val(sRest));
  } catch (const std::overflow_error&) {
    throw std::overflow_error("The number in the link \"" + std::string(sID) + "\" does not fit into 32 bits");
  }
}

}  // namespace ZELWbr3::ListLink
