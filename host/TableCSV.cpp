#include "host/TableCSV.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Style.h"

#include <cstdlib>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

bool IsHidden(Element& oElement) { return oElement.style().display() == "none"; }

std::string Row(const Element& oRow) {
  std::string sRow;
  const char* sBetween = "";
  for (const Element* oCell : oRow.cells()) {
    sRow += sBetween + Text::CSVField(Text::Trim(oCell->innerText()));
    sBetween = ",";
    // A heading of several columns is that of the first.
    for (int i = std::atoi(oCell->getAttribute("colspan").c_str()); i > 1; --i) sRow += sBetween;
  }
  return sRow + "\r\n";
}

}  // namespace

std::string TableCSV(Document& oDocument, const std::string& sID) {
  const Element* oTable = oDocument.all().item(sID);
  if (oTable == nullptr || oTable->tagName() != "table") {
    throw std::invalid_argument("The page has no table \"" + sID + "\"");
  }
  std::string sCSV;
  for (Element* oSection = oTable->firstElementChild(); oSection != nullptr;
       oSection = oSection->nextElementSibling()) {
    if (IsHidden(*oSection)) continue;
    for (Element* oRow = oSection->firstElementChild(); oRow != nullptr; oRow = oRow->nextElementSibling()) {
      if (oRow->tagName() == "tr" && !IsHidden(*oRow)) sCSV += Row(*oRow);
    }
  }
  return sCSV;
}

}  // namespace ZELWbr3::Host
