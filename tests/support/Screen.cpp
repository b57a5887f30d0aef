#include "tests/support/Screen.h"

#include "zelwbr3/dom/EmbeddedObject.h"
#include "zelwbr3/dom/Style.h"

#include <stdexcept>
#include <utility>

namespace ZELWbr3::Testing {

namespace {

bool IsVisible(Element& oElement) { return oElement.style().display() != "none"; }

}  // namespace

Element* Screen::Find(const std::string& sID) const { return Showing().VisibleDocument()->all().item(sID); }

Element& Screen::At(const std::string& sID) const {
  Element* oElement = Find(sID);
  if (oElement == nullptr) throw std::runtime_error("No element " + sID);
  return *oElement;
}

Element& Screen::In(const std::string& sTable, const std::string& sID) const {
  Element* oElement = At(sTable).all().item(sID);
  if (oElement == nullptr) throw std::runtime_error("No element " + sID + " in " + sTable);
  return *oElement;
}

bool Screen::IsShown(const std::string& sID) const { return IsVisible(At(sID)); }

std::string Screen::Texts(IDs ids) const {
  std::string sTexts;
  for (const char* sID : ids) sTexts += (sID == *ids.begin() ? "" : "|") + Text(sID);
  return sTexts;
}

std::string Screen::ShownOf(IDs ids) const {
  std::string sShown;
  for (const char* sID : ids) {
    if (IsShown(sID)) sShown += (sShown.empty() ? "" : " ") + std::string(sID);
  }
  return sShown;
}

std::string Screen::Property(const std::string& sID, const std::string& sName) const {
  return At(sID).object().Property(sName);
}

std::string Screen::Rows(const std::string& sTable) const {
  std::string sRows;
  for (Element* o = At(sTable).tBodies(0)->firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    if (!IsVisible(*o)) continue;
    const char* sBetween = "";
    for (const Element* oCell : o->cells()) {
      const std::string sText = oCell->innerText();
      sRows += std::exchange(sBetween, "|") + (sText == " " ? "~" : sText);
    }
    sRows += "\n";
  }
  return sRows;
}

std::string Screen::Cells(const std::string& sTable, std::size_t iRow) const {
  std::string sCells;
  for (const Element* oCell : At(sTable).tBodies(0)->rows(iRow)->cells()) {
    sCells += oCell->innerText() + " ." + oCell->className();
    if (oCell->hasAttribute("title")) sCells += " '" + oCell->title() + "'";
    if (oCell->hasAttribute("width")) sCells += " " + oCell->width();
    sCells += "\n";
  }
  return sCells;
}

}  // namespace ZELWbr3::Testing
