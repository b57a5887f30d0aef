#include "zelwbr3/dom/All.h"

#include "zelwbr3/dom/Document.h"

namespace ZELWbr3 {

namespace {

Element* FirstByWalking(const Element& oRoot, std::string_view sID) {
  for (Element* o = oRoot.firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    if (o->id() == sID) return o;
    if (Element* oBelow = FirstByWalking(*o, sID)) return oBelow;
  }
  return nullptr;
}

}  // namespace

Element* All::item(std::string_view sID) const {
  if (m_oRoot == nullptr || sID.empty()) return nullptr;
  // The index only holds what is part of the document. Anything else, such as a
  // row just cloned from its template, is small enough to walk.
  if (!m_oRoot->isConnected()) return FirstByWalking(*m_oRoot, sID);
  return m_oRoot->OwnerDocument().m_ids.FirstBelow(*m_oRoot, sID);
}

}  // namespace ZELWbr3
