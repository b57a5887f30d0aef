#include "zelwbr3/dom/IdIndex.h"

#include "zelwbr3/dom/Element.h"

namespace ZELWbr3 {

bool IdIndex::DocumentOrder::operator()(const Element* a, const Element* b) const { return a->Precedes(*b); }

void IdIndex::Add(Element& oElement) {
  const std::string& sID = oElement.id();
  if (sID.empty()) return;
  Entry& oEntry = m_entries[sID];
  if (oEntry.First == nullptr) {
    oEntry.First = &oElement;
    return;
  }
  if (oEntry.Several == nullptr) oEntry.Several = std::make_unique<Elements>(Elements{oEntry.First});
  oEntry.Several->insert(oEntry.Several->end(), &oElement);  // hint: most are rows appended in order
  oEntry.First = *oEntry.Several->begin();
}

void IdIndex::Remove(Element& oElement) {
  const auto it = m_entries.find(oElement.id());
  if (it == m_entries.end()) return;
  Entry& oEntry = it->second;
  if (oEntry.Several == nullptr) {
    m_entries.erase(it);
    return;
  }
  oEntry.Several->erase(&oElement);
  oEntry.First = *oEntry.Several->begin();
  if (oEntry.Several->size() == 1) oEntry.Several.reset();
}

Element* IdIndex::FirstBelow(const Element& oRoot, std::string_view sID) const {
  const auto it = m_entries.find(sID);
  if (it == m_entries.end()) return nullptr;
  const auto IsBelow = [&](const Element* oElement) { return oElement != &oRoot && oRoot.contains(*oElement); };
  const Entry& oEntry = it->second;
  if (IsBelow(oEntry.First)) return oEntry.First;
  if (oEntry.Several == nullptr) return nullptr;
  // In document order, the descendants of a root directly follow it.
  for (auto i = oEntry.Several->lower_bound(const_cast<Element*>(&oRoot)); i != oEntry.Several->end(); ++i) {
    if (IsBelow(*i)) return *i;
    if (*i != &oRoot) break;
  }
  return nullptr;
}

}  // namespace ZELWbr3
