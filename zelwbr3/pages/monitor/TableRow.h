#pragma once

#include "zelwbr3/dom/Element.h"

#include <cstddef>

namespace ZELWbr3 {

/// The row with that index in a table's first body, to copy or write. Throws
/// std::runtime_error, which names the table, if there is none.
Element& TableRow(const Element& oTable, std::size_t iIndex);

/// Index of the hidden template row in a table's body: below a row of headings,
/// or the only row.
inline constexpr std::size_t TemplateBelowHeadings = 1;
inline constexpr std::size_t TemplateAlone = 0;

}  // namespace ZELWbr3
