#include "zelwbr3/framework/modElement.h"

#include "zelwbr3/dom/Style.h"

namespace ZELWbr3::modElement {

void ShowElement(Element* oElement, bool bVisible) {
  if (oElement != nullptr) oElement->style().display(bVisible ? "" : "none");
}

}  // namespace ZELWbr3::modElement
