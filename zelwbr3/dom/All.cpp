#include "zelwbr3/dom/All.h"

#include "zelwbr3/dom/Document.h"

namespace ZELWbr3 {

namespace {

/// The number of the first element with an id; 0 if there is none.
NodeNumber FirstByWalking(const Element& oRoot, std::string_view sID) {
  NodeNumber iFound = 0;
  oRoot.ForEachChild([&](const Element& o) {
    if (iFound == 0) iFound = o.id() == sID ? o.Number() : FirstByWalking(o, sID);
  });
  return iFound;
}

}  // namespace

Element* All::item(std::string_view sID) const {
  if (m_oRoot == nullptr || sID.empty()) return nullptr;
  // The index only holds what is part of the document. Anything else, such as a
  // row just cloned from its template, is small enough to walk.
  Document& oDocument = m_oRoot->OwnerDocument();
  if (!m_oRoot->isConnected()) return oDocument.ByNumber(FirstByWalking(*m_oRoot, sID));
  oDocument.ThawWithID(sID);
  return oDocument.m_ids.FirstBelow(*m_oRoot, sID);
}

}  // namespace ZELWbr3
