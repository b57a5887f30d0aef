#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Element.h"
#include "zelwbr3/platform/UserLocale.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Adds rows from hidden template rows, and writes their cells.
namespace ZELWbr3::modCells {

/// Appends a visible copy of a template row to a table section.
ZELWBR3_EXPORT Element& AddRowFromTemplate(Element& oSection, Element& oTemplate);
/// The same at the end of the template's own section; returns the cells of the
/// copy. Throws std::runtime_error if there are fewer than iCells.
ZELWBR3_EXPORT std::vector<Element*> AddRowCells(Element& oTemplate, std::size_t iCells);

/// Appends a visible copy of a template row to the template's own section, with
/// texts for its first cells. An empty text leaves its cell as the template has
/// it. The way for many rows: they reach the browser as records, which cost little
/// however many there are. Throws std::runtime_error if the template has fewer
/// cells.
ZELWBR3_EXPORT void AddRow(Element& oTemplate, std::span<const std::string> texts);
/// The same for rows that have more than texts, such as ids, classes and links: oWrite
/// writes texts and attributes to what looks like the copy's cells, iCells or more. It
/// must not keep them. If it throws, there is no row.
ZELWBR3_EXPORT void AddRow(Element& oTemplate, std::size_t iCells,
                           const std::function<void(const std::vector<Element*>&)>& oWrite);

/// The text that an instance delivers for a missing value.
inline constexpr std::string_view MissingText = "(null)";
/// The text; empty for a missing one.
inline std::string_view Known(std::string_view sText) { return sText == MissingText ? std::string_view() : sText; }

/// A text for a cell; a blank for an empty one, because an empty cell would
/// collapse.
inline std::string CellText(std::string_view sText) { return std::string(sText.empty() ? " " : sText); }
/// Writes a text; a blank if it is empty or missing.
ZELWBR3_EXPORT void SetCellText(Element& oCell, std::string_view sText);
/// Writes any text, including "(null)"; a blank if it is empty or equals the
/// excepted text.
ZELWBR3_EXPORT void SetCellTextExcept(Element& oCell, std::string_view sText, std::string_view sExcept);

/// A counter in the user's groups; empty for -1, not available.
ZELWBR3_EXPORT std::string FormatCounter(double dCounter, const UserLocale& oLocale);
/// A percentage with two decimals and a percent sign.
ZELWBR3_EXPORT std::string FormatPercent(float fPercent, const UserLocale& oLocale);
/// The share of a part in percent; 100 if the whole is 0 or less.
ZELWBR3_EXPORT float Percentage(float fWhole, float fPart);

/// Writes a parameter's name into a cell: the class of its group, the name, and
/// the id "PARAM" + name, by which clicks are recognised. Without a name, the
/// cell is neither a link nor a tab stop.
ZELWBR3_EXPORT void FillParamCell(Element& oCell, std::string_view sName, Long lGroup);

/// The rest of an id after a prefix, such as the name in "PARAM" + name. False if
/// the id does not start with the prefix.
ZELWBR3_EXPORT bool AfterPrefix(std::string_view sPrefix, std::string_view sID, std::string& sRest);

}  // namespace ZELWbr3::modCells
