#pragma once

#include "zelwbr3/dom/Element.h"

#include <cstddef>

namespace ZELWbr3 {

/// The row with that index of a table's first body, which pages copy or write.
/// Throws std::runtime_error that names the table when there is none.
Element& TableRow(const Element& oTable, std::size_t iIndex);

/// Index of the hidden template row in a table's body: below the headings when
/// they are part of the body, else the only row.
inline constexpr std::size_t TemplateBelowHeadings = 1;
inline constexpr std::size_t TemplateAlone = 0;

}  // namespace ZELWbr3
