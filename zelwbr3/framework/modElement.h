#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Element.h"

/// Small helpers for elements.
namespace ZELWbr3::modElement {

/// Shows or hides an element; null is skipped.
ZELWBR3_EXPORT void ShowElement(Element* oElement, bool bVisible);

}  // namespace ZELWbr3::modElement
