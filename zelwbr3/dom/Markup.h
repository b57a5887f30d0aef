#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/DocumentBuilder.h"

#include <string_view>

namespace ZELWbr3 {

/// Builds the elements of a piece of markup. It may hold elements with
/// attributes in double quotes, void elements such as <br>, text and the
/// entities &amp; &lt; &gt; &quot; and &#39;. For anything else throws
/// std::invalid_argument, which names the position; everything before that
/// position has been built by then.
ZELWBR3_EXPORT void BuildMarkup(DocumentBuilder& oBuilder, std::string_view sMarkup);

}  // namespace ZELWbr3
