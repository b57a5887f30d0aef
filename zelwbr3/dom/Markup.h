#pragma once

#include "zelwbr3/dom/DocumentBuilder.h"

#include <string_view>

namespace ZELWbr3 {

/// Builds what a piece of markup says. Understood are elements with attributes
/// in double quotes, void elements such as <br>, text and the entities &amp;
/// &lt; &gt; &quot; and &#39;. Throws std::invalid_argument, which names the
/// place, for anything else; what stood before that place is built by then.
void BuildMarkup(DocumentBuilder& oBuilder, std::string_view sMarkup);

}  // namespace ZELWbr3
