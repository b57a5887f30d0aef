#pragma once

#include "zelwbr3/base/Checked.h"

#include <optional>
#include <string>
#include <string_view>

/// The links of a list: the id "ITEM" and the entry's index.
namespace ZELWbr3::ListLink {

std::string ID(Long lIndex);
/// The index in a link's id; 0 if no number follows "ITEM", no value for other
/// ids. Throws std::overflow_error beyond 32 bits.
std::optional<Long> Index(std::string_view sID);

/// The entry of a collection with that index, which may differ from its position
/// there; null if there is none.
template <class Collection>
auto Find(const Collection& oCollection, Long lIndex) {
  const int iCount = oCollection.Count();
  for (int iPlace = 1; iPlace <= iCount; ++iPlace) {
    if (auto oItem = oCollection.Item(iPlace); oItem->Index() == lIndex) return oItem;
  }
  return decltype(oCollection.Item(1))();
}

}  // namespace ZELWbr3::ListLink
