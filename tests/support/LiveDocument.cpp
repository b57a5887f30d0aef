#include "tests/support/LiveDocument.h"

#include "zelwbr3/dom/FlatList.h"

namespace ZELWbr3::Testing {

namespace {

/// A document as lines: one for each element, attribute and text.
struct Lines {
  void Begin(const std::string& sTag, NodeNumber iNumber) { Add("<" + sTag + " " + std::to_string(iNumber)); }
  void Attribute(const std::string& sName, const std::string& sValue) {
    // A style may end with a semicolon.
    Add("@" + sName + "=" + (sName == "style" && sValue.ends_with(';') ? sValue.substr(0, sValue.size() - 1) : sValue));
  }
  /// Neighbours are one. Where there are only blanks, nobody sees them: a list's rows
  /// are moved, and the line ends between them stay.
  void Text(const std::string& sText) { Pending += sText; }
  void End() { Add(">"); }
  void Add(const std::string& sLine) {
    if (Pending.find_first_not_of(" \t\n") != std::string::npos) All += "\n\"" + Pending;
    Pending.clear();
    All += "\n" + sLine;
  }

  std::string All;
  std::string Pending;
};

void Describe(const Element& oElement, Lines& oLines) {
  oLines.Begin(oElement.tagName(), oElement.Number());
  for (const auto& [sName, sValue] : oElement.attributes()) oLines.Attribute(sName, sValue);
  oLines.Text(oElement.text());
  oElement.ForEachChild([&](const Element& oChild) {
    Describe(oChild, oLines);
    oLines.Text(oChild.tail());
  });
  oLines.End();
}

void DescribeLive(const std::string& sList, Lines& oLines) {
  for (FlatListReader oList(sList); !oList.AtEnd();) {
    const auto eItem = oList.Number();
    const std::string sFirst = eItem == 4 ? "" : oList.Text();
    if (eItem == 1) oLines.Begin(sFirst, oList.Number());
    if (eItem == 2) oLines.Attribute(sFirst, oList.Text());
    if (eItem == 3) oLines.Text(sFirst);
    if (eItem == 4) oLines.End();
  }
}

}  // namespace

std::string LinesOf(const Element& oRoot) {
  Lines oLines;
  Describe(oRoot, oLines);
  return oLines.All;
}

std::string LinesOf(const std::string& sSnapshot) {
  Lines oLines;
  DescribeLive(sSnapshot, oLines);
  return oLines.All;
}

}  // namespace ZELWbr3::Testing
