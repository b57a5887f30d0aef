#include "zelwbr3/framework/KeyClick.h"

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/KeyCode.h"

#include <algorithm>
#include <array>

namespace ZELWbr3 {

namespace {

/// True if Enter and Space have their own meaning in an element.
bool KeepsKeys(const Element& oElement) {
  static constexpr std::array<std::string_view, 9> Buttons = {"button", "submit", "reset", "image", "checkbox",
                                                              "radio",  "file",   "color", "range"};
  const std::string& sTag = oElement.tagName();
  if (sTag == "input") return std::ranges::find(Buttons, oElement.getAttribute("type")) == Buttons.end();
  return sTag == "textarea" || sTag == "select" || sTag == "option" || sTag == "iframe" ||
         oElement.hasAttribute("contenteditable");
}

}  // namespace

bool ClicksActiveElement(const Document& oDocument, Long lKeyCode) {
  if (lKeyCode != KeyCode::Enter && lKeyCode != KeyCode::Space) return false;
  const Element* oActive = oDocument.activeElement();
  return oActive != nullptr && oActive != oDocument.body() && !KeepsKeys(*oActive);
}

}  // namespace ZELWbr3
