#include "zelwbr3/testing/Picture.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/Style.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace ZELWbr3::Testing {

namespace {

using Elements = std::vector<Element*>;

bool HasClass(const Element& oElement, const std::string& sClass) {
  return (" " + oElement.className() + " ").find(" " + sClass + " ") != std::string::npos;
}

bool HasNoDisplay(Element& oElement) { return oElement.style().display() == "none"; }

/// By its own attributes, or by one of the style sheet's two exceptions.
bool IsHidden(Element& oElement) {
  if (HasNoDisplay(oElement) || oElement.hasAttribute("hidden") || oElement.tagName() == "script") return true;
  if (HasClass(oElement, "zelFillWriteOff")) {
    Element& oBefore = *oElement.previousElementSibling();
    return !HasNoDisplay(oBefore) || !HasNoDisplay(*oBefore.previousElementSibling());
  }
  return oElement.id() == "btnFormClose" && HasClass(*oElement.OwnerDocument().body(), "zelFormRoot");
}

Elements Children(const Element& oParent) {
  Elements children;
  for (Element* o = oParent.firstElementChild(); o != nullptr; o = o->nextElementSibling()) children.push_back(o);
  return children;
}

/// A sign that the style sheet draws in front of an element.
std::string SignOf(const Element& oElement) {
  static const std::map<std::string, std::string> signs = {
      {"zelTblCellParGen", "G "}, {"zelTblCellParExt", "E "},       {"zelTblCellParSup", "S "},
      {"zelTblCellParInf", "I "}, {"zelTblCellParNon", "– "},       {"zelParamGenLrg", "G "},
      {"zelParamExtLrg", "E "},   {"zelParamSupLrg", "S "},         {"zelParamInfLrg", "I "},
      {"zelParamNonLrg", "– "},   {"zelTblCellExpClosed", ">"},     {"zelTblCellExpOpen", "v"},
      {"zelTblCellExpDsbl", "-"}, {"zelTblCellAltArrowLeft", "→ "},
  };
  if (oElement.tagName() == "h2" && HasClass(*oElement.parentElement(), "zelError")) return "! ";
  if (HasClass(oElement, "zelHistResult") && HasClass(*oElement.parentElement(), "zelHistFailed")) return "! ";
  const auto it = signs.find(oElement.className());
  return it == signs.end() ? "" : it->second;
}

/// One line: control characters, and those that turn a line around, escaped;
/// long runs of one character counted.
std::string Escaped(std::string_view sText) {
  std::string sEscaped;
  for (std::size_t i = 0; i < sText.size();) {
    const auto c = static_cast<unsigned char>(sText[i]);
    const std::size_t iLength = c < 0x80 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
    const std::string_view sCharacter = sText.substr(i, iLength);
    std::size_t iRun = 1;
    while (sText.substr(i + iRun * iLength, iLength) == sCharacter) ++iRun;
    const bool bUnseen = c < 0x20 || c == 0x7F || (sCharacter >= "\xE2\x80\x8B" && sCharacter <= "\xE2\x80\xAE") ||
                         (sCharacter >= "\xE2\x81\xA0" && sCharacter <= "\xE2\x81\xAF") || sCharacter == "\xEF\xBB\xBF";
    if (bUnseen) {
      const unsigned lCodePoint =
          iLength == 1 ? c : (c & 0xFu) << 12 | (sCharacter[1] & 0x3Fu) << 6 | (sCharacter[2] & 0x3Fu);
      char sCode[8];
      std::snprintf(sCode, sizeof sCode, "\\u%04X", lCodePoint);
      sEscaped += c == '\n' ? "\\n" : c == '\t' ? "\\t" : sCode;
      iRun = 1;
    } else if (iRun > 20) {
      sEscaped += std::string(sCharacter) + "{" + std::to_string(iRun) + "}";
    } else {
      iRun = 1;
      sEscaped += sCharacter;
    }
    i += iRun * iLength;
  }
  return sEscaped;
}

std::size_t Width(const std::string& sText) {
  return static_cast<std::size_t>(std::ranges::count_if(sText, [](char c) { return (c & 0xC0) != 0x80; }));
}

class Painter {
 public:
  std::string Paint(const Document& oDocument) {
    Block(*oDocument.body());
    EndLine();
    return m_sPicture;
  }

 private:
  static constexpr std::size_t WidestColumn = 40;

  struct Cell {
    std::string Text;
    bool IsNumber;
    int Columns;
  };
  using Row = std::vector<Cell>;

  void Line(const std::string& sLine) { m_sPicture += sLine.substr(0, sLine.find_last_not_of(' ') + 1) + "\n"; }

  void EndLine() {
    const std::string sLine = Text::Trim(std::exchange(m_sLine, ""));
    if (!sLine.empty()) Line(sLine);
  }

  void Block(Element& oElement) {
    static const std::set<std::string> inlines = {"a", "b", "bdi", "button", "i", "span"};
    const std::string& sTag = oElement.tagName();
    if (oElement.getAttribute("role") == "tabpanel") {
      EndLine();
      Line("--- " + oElement.OwnerDocument().all().item(oElement.getAttribute("aria-labelledby"))->innerText() +
           " ---");
    } else if (IsHidden(oElement)) {
      return;
    }
    if (sTag == "table") {
      Table(oElement);
    } else if (HasClass(oElement, "zelTbs")) {
      Tabs(oElement);
    } else if (inlines.contains(sTag) || sTag.starts_with("zel-")) {
      m_sLine += Inline(oElement) + " ";
    } else {
      EndLine();
      m_sLine += SignOf(oElement) + Content(oElement.text());
      for (Element* oChild : Children(oElement)) {
        Block(*oChild);
        m_sLine += Content(oChild->tail());
      }
      EndLine();
    }
  }

  void Tabs(Element& oStrip) {
    std::string sTabs = "Tabs:";
    for (Element* oTab : Children(oStrip)) {
      const std::string& sClass = oTab->className();
      if (oTab->tagName() != "a") continue;
      const std::string sText = sClass.starts_with("zelTbsLabel") ? oTab->innerText() : "[" + oTab->innerText() + "]";
      sTabs += sClass.ends_with("Dsbl") ? " (" + sText + ")" : (sClass.ends_with("On") ? " *" : " ") + sText;
    }
    EndLine();
    Line(sTabs);
  }

  /// A text of the page file; its line ends and indentation are no content.
  static std::string Content(const std::string& sText) {
    return sText.find_first_not_of(" \n") == std::string::npos ? (sText.empty() ? "" : " ") : Escaped(sText);
  }

  /// "#" and the id, with "*" for the element's own text at its end.
  static std::string IdOf(const Element& oElement) {
    const std::string sText = oElement.innerText();
    std::string sID = oElement.id();
    if (!sText.empty() && oElement.tagName() != "button" && sID.ends_with(sText))
      sID.replace(sID.size() - sText.size(), sText.size(), "*");
    return sID.empty() ? "" : "#" + Escaped(sID);
  }

  static std::string Inline(Element& oElement) {
    if (IsHidden(oElement)) return "";
    const std::string& sTag = oElement.tagName();
    std::string sText = SignOf(oElement) + Content(oElement.text());
    for (Element* oChild : Children(oElement)) sText += Inline(*oChild) + Content(oChild->tail());

    if (sTag.starts_with("zel-")) {
      sText = "{" + sTag.substr(4);
      for (const auto& [sName, sValue] : oElement.attributes()) {
        if (sName.starts_with("data-")) sText += " " + sName.substr(5) + "=" + sValue;
      }
      return sText + "}";
    }
    const bool bCell = sTag == "td" || sTag == "th";
    if (bCell && sText == " ") sText = "~";
    const std::string sID = IdOf(oElement);
    if (sTag == "button") {
      return (oElement.hasAttribute("disabled") ? "<(" + sText + ")>" : "<" + sText + ">") + sID;
    }
    const bool bClickable = sTag == "a" || (bCell && oElement.hasAttribute("tabindex") && !oElement.id().empty());
    if (bClickable && sText != "~") sText = "[" + sText + "]" + sID;
    if (bCell && oElement.hasAttribute("title")) sText += " \"" + Escaped(oElement.title()) + "\"";
    return sTag == "div" || sTag == "p" ? " " + sText : sText;
  }

  void Table(Element& oTable) {
    EndLine();
    std::string sName = oTable.getAttribute("aria-label");
    std::vector<Row> rows;
    for (Element* oPart : Children(oTable)) {
      if (oPart->tagName() == "caption") sName = oPart->innerText();
      for (Element* oRow : Children(*oPart)) {
        if (oRow->tagName() != "tr" || IsHidden(*oRow)) continue;
        Row& oCells = rows.emplace_back();
        for (Element* oCell : Children(*oRow)) {
          int iColumns = 1;
          const std::string& sSpan = oCell->getAttribute("colspan");
          std::from_chars(sSpan.data(), sSpan.data() + sSpan.size(), iColumns);
          oCells.push_back(
              {Inline(*oCell), HasClass(*oCell, "zelTblCellNum") || HasClass(*oCell, "zelTblColHdrNum"), iColumns});
        }
      }
    }
    if (!sName.empty()) Line("-- " + sName + (oTable.id().empty() ? "" : " #" + oTable.id()));
    Rows(rows);
  }

  void Rows(const std::vector<Row>& rows) {
    std::map<int, std::size_t> widths;  // by column
    for (const Row& oRow : rows) {
      int iColumn = 0;
      for (const Cell& oCell : oRow) {
        const std::size_t iWidth = Width(oCell.Text);
        if (oCell.Columns == 1 && iWidth <= WidestColumn) widths[iColumn] = std::max(widths[iColumn], iWidth);
        iColumn += oCell.Columns;
      }
    }
    for (const Row& oRow : rows) {
      std::string sRow;
      int iColumn = 0;
      for (const Cell& oCell : oRow) {
        const std::size_t iWidth = Width(oCell.Text);
        const std::string sPad(std::max(widths[iColumn], iWidth) - iWidth, ' ');
        sRow += (iColumn == 0 ? "  " : " | ") + (oCell.IsNumber ? sPad + oCell.Text : oCell.Text + sPad);
        iColumn += oCell.Columns;
      }
      Line(std::ranges::all_of(oRow, [](const Cell& o) { return o.Text.empty(); }) ? "  (an empty row)" : sRow);
    }
  }

  std::string m_sPicture;
  std::string m_sLine;
};

}  // namespace

std::string Picture(const Document& oDocument) { return Painter().Paint(oDocument); }

}  // namespace ZELWbr3::Testing
