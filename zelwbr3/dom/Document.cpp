#include "zelwbr3/dom/Document.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace ZELWbr3 {

Element* Document::body() const {
  if (m_oRoot == nullptr) return nullptr;
  Element* oChild = m_oRoot->firstElementChild();
  while (oChild != nullptr && oChild->tagName() != "body") oChild = oChild->nextElementSibling();
  return oChild;
}

Element* Document::activeElement() const { return m_oActive != nullptr ? m_oActive : body(); }

void Document::Activate(Element* oElement) {
  static constexpr std::array<std::string_view, 10> Tags = {"a",      "button", "input", "select", "textarea",
                                                            "option", "object", "embed", "td",     "th"};
  const auto CanBeActive = [](const Element& o) {
    return std::ranges::find(Tags, o.tagName()) != Tags.end() || o.tagName().find('-') != std::string::npos ||
           o.hasAttribute("tabindex");
  };
  while (oElement != nullptr && !CanBeActive(*oElement)) oElement = oElement->parentElement();
  m_oActive = oElement != nullptr && oElement->isConnected() ? oElement : nullptr;
}

Element* Document::ByNumber(NodeNumber iNumber) {
  if (const auto it = m_elements.find(iNumber); it != m_elements.end()) return &it->second;
  const auto it = m_frozen.upper_bound(iNumber);
  if (it == m_frozen.begin() || iNumber >= std::prev(it)->second->m_oFrozen.End()) return nullptr;
  Thaw(iNumber);
  return &m_elements.at(iNumber);
}

Element& Document::NewElement(std::string_view sTag, NodeNumber& iNext) {
  auto it = m_tags.find(sTag);
  if (it == m_tags.end()) it = m_tags.emplace(sTag).first;
  const NodeNumber iNumber = iNext++;
  return m_elements.try_emplace(m_elements.end(), iNumber, Element::Key(), *this, iNumber, *it)->second;
}

Element& Document::CloneBelow(const Element& oSource, Element* oParent, NodeNumber& iNext) {
  Element& oClone = NewElement(oSource.tagName(), iNext);
  oClone.m_oAttributes = oSource.m_oAttributes;
  oClone.m_sText = oSource.m_sText;
  if (oParent != nullptr) {
    oParent->Append(oClone);
    oClone.m_sTail = oSource.m_sTail;
  }
  for (const Element* oChild = oSource.m_oFirstChild; oChild != nullptr; oChild = oChild->m_oNext) {
    Element& oChildClone = CloneBelow(*oChild, &oClone, iNext);
    oChildClone.Frozen(oChild->m_oFrozen.Copy(iNext));
    iNext = oChildClone.m_oFrozen.Empty() ? iNext : oChildClone.m_oFrozen.End();
  }
  return oClone;
}

Element& Document::Thaw(NodeNumber iNumber) {
  Element& oBefore = *std::prev(m_frozen.upper_bound(iNumber))->second;
  const FrozenRows oRows = oBefore.m_oFrozen;
  const std::uint32_t iRow = oRows.RowWith(iNumber);
  NodeNumber iNext = oRows.Number(iRow);
  Element& oRow = CloneBelow(oRows.StandIn(iRow, *oBefore.m_oParent), nullptr, iNext);
  oBefore.m_oParent->Insert(&oBefore, oRow, oRows.Part(0, iRow), oRows.Part(iRow + 1, oRows.Count() - iRow - 1));
  return oRow;
}

void Document::AddFrozen(const Element& oTemplate, std::string_view sValues) {
  Element& oBefore = *oTemplate.m_oParent->m_oLastChild;
  const FrozenRows& oRows = oBefore.m_oFrozen;
  if (oRows.Count() == 1) m_frozen.emplace(m_iNext, &oBefore);
  const NodeNumber iFirst = std::exchange(m_iNext, oRows.End());
  Report({Change::Kind::Row, oTemplate.m_iNumber, iFirst, oRows.Columns(), sValues});
}

void Document::ThawWithID(std::string_view sID) {
  std::vector<NodeNumber> found;
  for (const auto& [iFirst, oBefore] : m_frozen) {
    const auto rows = oBefore->m_oFrozen.WithID(sID);
    found.insert(found.end(), rows.begin(), rows.end());
  }
  for (const NodeNumber iRow : found) Thaw(iRow);
}

void Document::ThawFollowers(const Element& oElement) {
  std::vector<NodeNumber> followers;
  for (const auto& [iFirst, oBefore] : m_frozen) {
    const Element* oSection = oBefore->m_oParent;
    if (oBefore->m_oFrozen.HasIDs() && oSection != &oElement && oSection->contains(oElement))
      followers.push_back(iFirst);
  }
  for (const NodeNumber iFirst : followers) Thaw(iFirst);
}

void Document::Connect(Element& oRoot) {
  m_ids.Add(oRoot);
  for (Element* oChild = oRoot.m_oFirstChild; oChild != nullptr; oChild = oChild->m_oNext) Connect(*oChild);
}

void Document::Disconnect(Element& oRoot) {
  m_ids.Remove(oRoot);
  if (m_oActive == &oRoot) m_oActive = nullptr;
  for (Element* oChild = oRoot.m_oFirstChild; oChild != nullptr; oChild = oChild->m_oNext) Disconnect(*oChild);
}

bool Document::IsErrorPage() const { return m_oRoot != nullptr && m_oRoot->hasAttribute(ErrorPageMark); }

}  // namespace ZELWbr3
