#include "zelwbr3/dom/Style.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Document.h"

#include <algorithm>
#include <vector>

namespace ZELWbr3 {

namespace {

/// The declarations of a style attribute. The page files are ours and have no
/// semicolon inside a value.
std::vector<std::string> Declarations(std::string_view sStyle) {
  std::vector<std::string> declarations;
  while (!sStyle.empty()) {
    const auto iEnd = std::min(sStyle.find(';'), sStyle.size());
    if (std::string sDeclaration = Text::Trim(sStyle.substr(0, iEnd)); !sDeclaration.empty()) {
      declarations.push_back(std::move(sDeclaration));
    }
    sStyle.remove_prefix(std::min(iEnd + 1, sStyle.size()));
  }
  return declarations;
}

bool IsDisplay(std::string_view sDeclaration) {
  return Text::Trim(sDeclaration.substr(0, sDeclaration.find(':'))) == "display";
}

}  // namespace

std::string Style::display(const Element& oElement) {
  const auto declarations = Declarations(oElement.getAttribute("style"));
  const auto it = std::ranges::find_if(declarations, IsDisplay);
  return it == declarations.end() ? "" : Text::Trim(std::string_view(*it).substr(it->find(':') + 1));
}

void Style::display(std::string_view sValue) {
  // Like a browser, leave the attribute alone if the value does not change.
  if (display() == sValue) return;
  std::string sStyle;
  for (const std::string& sDeclaration : Declarations(m_oElement.getAttribute("style"))) {
    if (!IsDisplay(sDeclaration)) sStyle += sDeclaration + "; ";
  }
  const std::string sDisplay = Text::Clean(sValue);
  if (!sDisplay.empty()) sStyle += "display: " + sDisplay + ";";
  sStyle = Text::Trim(sStyle);
  m_oElement.AssignAttribute("style", sStyle.empty() ? std::nullopt : std::optional(sStyle));
  m_oElement.OwnerDocument().Report({Change::Kind::Display, m_oElement.Number(), 0, {}, sDisplay});
}

}  // namespace ZELWbr3
