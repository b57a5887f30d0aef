#include "pages/monitor/ListLink.h"

#include "framework/modCells.h"
#include "framework/modFormat.h"

namespace ZELWbr3::ListLink {

namespace {

constexpr const char* Prefix = "ITEM";

}  // namespace

std::string ID(Long lIndex) { return Prefix + std::to_string(lIndex); }

std::optional<Long> Index(std::string_view sID) {
  std::string sRest;
  if (!modCells::Behind(Prefix, sID, sRest)) return std::nullopt;
  return modFormat::ToLong(modFormat::Val(sRest));
}

}  // namespace ZELWbr3::ListLink
