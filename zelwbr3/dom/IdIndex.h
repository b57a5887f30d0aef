#pragma once

#include "zelwbr3/base/Export.h"

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ZELWbr3 {

class Element;

/// The connected elements of a document by id; elements with the same id are in
/// document order. Add an element after it has been inserted into the tree, and
/// remove it before it leaves the tree.
class ZELWBR3_EXPORT IdIndex {
 public:
  void Add(Element& oElement);
  void Remove(Element& oElement);

  /// The first element below oRoot with this id; null if there is none.
  Element* FirstBelow(const Element& oRoot, std::string_view sID) const;

 private:
  struct DocumentOrder {
    bool operator()(const Element* a, const Element* b) const;
  };
  using Elements = std::set<Element*, DocumentOrder>;

  /// Nearly every id occurs once; Several is only made for the others.
  struct Entry {
    Element* First = nullptr;
    std::unique_ptr<Elements> Several;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view sText) const { return std::hash<std::string_view>()(sText); }
  };

  std::unordered_map<std::string, Entry, Hash, std::equal_to<>> m_entries;
};

}  // namespace ZELWbr3
