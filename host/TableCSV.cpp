#include "host/TableCSV.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Style.h"

#include <cstdlib>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

bool IsHidden(const Element& oElement) { return Style::display(oElement) == "none"; }

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
  oTable->ForEachChild([&](const Element& oSection) {
    if (IsHidden(oSection)) return;
    oSection.ForEachChild([&](const Element& oRow) {
      if (oRow.tagName() == "tr" && !IsHidden(oRow)) sCSV += Row(oRow);
    });
  });
  return sCSV;
}

}  // namespace ZELWbr3::Host
