#include "zelwbr3/headless/HeadlessCommandlist.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace ZELWbr3::Headless {

void HeadlessCommandlist::ClickItem(Long lKey) {
  if (Click(lKey)) return;
  const auto IsMeant = [&](const ZELCmd3::CommandItem& oItem) { return oItem.Key == lKey && !oItem.Separator; };
  if (std::ranges::none_of(Items(), IsMeant)) {
    throw std::invalid_argument("The command list shown has no item with the key " + std::to_string(lKey));
  }
}

}  // namespace ZELWbr3::Headless
