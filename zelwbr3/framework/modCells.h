#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/dom/Element.h"
#include "zelwbr3/platform/UserLocale.h"

#include <string>
#include <string_view>
#include <vector>

/// Rows made from hidden template rows, and what pages write into their cells.
namespace ZELWbr3::modCells {

/// Appends a visible copy of a template row to a table section.
Element& AddRowFromTemplate(Element& oSection, Element& oTemplate);
/// The same behind the template's own rows, answering the cells of the copy;
/// throws std::runtime_error when there are fewer than iCells.
std::vector<Element*> AddRowCells(Element& oTemplate, std::size_t iCells);

/// What an instance delivers for a text that is missing.
inline constexpr std::string_view MissingText = "(null)";
/// The text, or nothing for one that is missing.
inline std::string_view Known(std::string_view sText) { return sText == MissingText ? std::string_view() : sText; }

/// A text that is empty or missing is written as a blank: an empty cell would
/// collapse.
void SetCellText(Element& oCell, std::string_view sText);
/// Writes any text, a missing one included, but a blank for an empty one and for
/// the excepted one.
void SetCellTextExcept(Element& oCell, std::string_view sText, std::string_view sExcept);

/// A counter in the user's groups; the empty text for -1, not available.
std::string FormatCounter(double dCounter, const UserLocale& oLocale);
/// A percentage with two decimals and its sign.
std::string FormatPercent(float fPercent, const UserLocale& oLocale);
/// The share of a part in percent; 100 when the whole is 0 or less.
float Percentage(float fWhole, float fPart);

/// Makes a cell a parameter's name: its group's class, its name, and the id
/// "PARAM" with the name that a click is recognised by. Without a name it is no
/// link and no tab stop.
void FillParamCell(Element& oCell, std::string_view sName, Long lGroup);

/// What an id says after a prefix, such as the name in "PARAM" + name; false
/// when it does not begin with it.
bool AfterPrefix(std::string_view sPrefix, std::string_view sID, std::string& sRest);

}  // namespace ZELWbr3::modCells
