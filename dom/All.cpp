#include "dom/All.h"

#include "dom/Document.h"

namespace ZELWbr3 {

Element* All::item(std::string_view sID) const {
  return m_oRoot == nullptr ? nullptr : m_oRoot->OwnerDocument().m_ids.FirstBelow(*m_oRoot, sID);
}

}  // namespace ZELWbr3
