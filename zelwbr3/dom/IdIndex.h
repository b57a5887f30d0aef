#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ZELWbr3 {

class Element;

/// The connected elements of a document by id, those with the same id in
/// document order. An element is added after it has its place in the tree and
/// removed before it leaves it.
class IdIndex {
 public:
  void Add(Element& oElement);
  void Remove(Element& oElement);

  /// The first element with this id that is below oRoot.
  Element* FirstBelow(const Element& oRoot, std::string_view sID) const;

 private:
  struct DocumentOrder {
    bool operator()(const Element* a, const Element* b) const;
  };
  using Elements = std::set<Element*, DocumentOrder>;

  /// Nearly every id stands once; the set is there for those that do not.
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
