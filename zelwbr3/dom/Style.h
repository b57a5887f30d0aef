#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Element.h"

namespace ZELWbr3 {

/// An element's own style. Only `display` can be written.
class ZELWBR3_EXPORT Style {
 public:
  explicit Style(Element& oElement) : m_oElement(oElement) {}

  /// "" = the element's default, "none" = hidden.
  std::string display() const { return display(m_oElement); }
  static std::string display(const Element& oElement);
  void display(std::string_view sValue);

 private:
  Element& m_oElement;
};

}  // namespace ZELWbr3
