#pragma once

#include "zelwbr3/dom/Element.h"

#include <string>

namespace ZELWbr3::Testing {

// A document as lines, one for each element, attribute and text, to compare the
// replica with what a browser shows.

std::string LinesOf(const Element& oRoot);
/// Of a list in the form of the agent's snapshot.
std::string LinesOf(const std::string& sSnapshot);

}  // namespace ZELWbr3::Testing
