#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Element.h"

namespace ZELWbr3 {

/// The elements below a root, by id. If several elements share an id, the first
/// in document order is returned; null if there is none, and for the empty id.
/// The cost does not depend on the size of the document.
class ZELWBR3_EXPORT All {
 public:
  /// A null root has nothing below it.
  explicit All(const Element* oRoot) : m_oRoot(oRoot) {}

  Element* item(std::string_view sID) const;
  Element* namedItem(std::string_view sID) const { return item(sID); }

 private:
  const Element* m_oRoot;
};

}  // namespace ZELWbr3
