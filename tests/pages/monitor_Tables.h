#pragma once

#include "dom/Style.h"
#include "tests/pages/Told.h"

#include <gtest/gtest.h>

#include <string>

namespace ZELWbr3::Testing {

/// What is told of a page with tables.
class ToldTables : public Told {
 public:
  using Told::Told;

  void Click(const std::string& sID) {
    Platform.FrontFrame().Click(sID);
    Platform.MessagePump().Drain();
  }

  /// The visible rows of a table's first body, one a line, cells as
  /// "text|text"; "~" stands for the blank of an empty cell.
  std::string Rows(const std::string& sTable) {
    std::string sRows;
    const Element* oBody = Find(sTable)->tBodies(0);
    for (Element* oRow = oBody->firstElementChild(); oRow != nullptr; oRow = oRow->nextElementSibling()) {
      if (oRow->style().display() == "none") continue;
      const char* sBetween = "";
      for (const Element* oCell : oRow->cells()) {
        const std::string sText = oCell->innerText();
        sRows += std::exchange(sBetween, "|") + (sText == " " ? "~" : sText);
      }
      sRows += "\n";
    }
    return sRows;
  }

  /// The cells of a row of a table's first body, each with its class and, when
  /// they have them, tooltip and width.
  std::string Cells(const std::string& sTable, std::size_t iRow) {
    std::string sCells;
    for (const Element* oCell : Find(sTable)->tBodies(0)->rows(iRow)->cells()) {
      sCells += oCell->innerText() + " ." + oCell->className();
      if (oCell->hasAttribute("title")) sCells += " '" + oCell->title() + "'";
      if (oCell->hasAttribute("width")) sCells += " " + oCell->width();
      sCells += "\n";
    }
    return sCells;
  }
};

}  // namespace ZELWbr3::Testing
