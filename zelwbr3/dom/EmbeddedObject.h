#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Element.h"

#include <cstdint>

namespace ZELWbr3 {

/// The properties of an embedded object (a fill bar, the instance picture). They
/// are attributes in the document, "data-" and the property's name in lower
/// case; the object draws itself from them.
class ZELWBR3_EXPORT EmbeddedObject {
 public:
  explicit EmbeddedObject(Element& oElement) : m_oElement(oElement) {}

  void Property(std::string_view sName, bool bValue) { Set(sName, bValue ? "true" : "false"); }
  void Property(std::string_view sName, std::int32_t lValue) { Set(sName, std::to_string(lValue)); }
  /// The value's text; empty if it was never set.
  const std::string& Property(std::string_view sName) const;

 private:
  void Set(std::string_view sName, std::string_view sValue);

  Element& m_oElement;
};

}  // namespace ZELWbr3
