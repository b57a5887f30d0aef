#include "zelwbr3/dom/Document.h"

#include <algorithm>
#include <array>

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
  return iNumber == 0 || iNumber > m_elements.size() ? nullptr : &m_elements[iNumber - 1];
}

Element& Document::NewElement(std::string_view sTag) {
  auto it = m_tags.find(sTag);
  if (it == m_tags.end()) it = m_tags.emplace(sTag).first;
  return m_elements.emplace_back(Element::Key(), *this, static_cast<NodeNumber>(m_elements.size() + 1), *it);
}

Element& Document::CloneBelow(const Element& oSource, Element* oParent) {
  Element& oClone = NewElement(oSource.tagName());
  oClone.m_oAttributes = oSource.m_oAttributes;
  oClone.m_sText = oSource.m_sText;
  if (oParent != nullptr) {
    oParent->Insert(oParent->m_oLastChild, oClone);
    oClone.m_sTail = oSource.m_sTail;
  }
  for (const Element* oChild = oSource.m_oFirstChild; oChild != nullptr; oChild = oChild->m_oNext) {
    CloneBelow(*oChild, &oClone);
  }
  return oClone;
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
