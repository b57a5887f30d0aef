#include "zelwbr3/pages/history/HistoryKind.h"

#include "zelwbr3/framework/PageController.h"

#include <array>
#include <cstddef>

namespace ZELWbr3 {

const HistoryKind& HistoryKind::Of(Long lKind) {
  static constexpr std::array<HistoryKind, 4> Kinds = {{{"zelHistComplete", "Complete Data"},
                                                        {"zelHistIncremental", "Incremental Data"},
                                                        {"zelHistLog", "Log"},
                                                        {"zelHistOther", "Other"}}};
  const bool bKnown = lKind >= 1 && lKind <= static_cast<int>(Kinds.size());
  return bKnown ? Kinds[static_cast<std::size_t>(lKind) - 1] : Kinds.back();
}

}  // namespace ZELWbr3
