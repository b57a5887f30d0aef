#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Document.h"

#include <string>
#include <vector>

namespace ZELWbr3::Headless {

/// A document as self-contained HTML: the style sheets and scripts that it loads are
/// inlined, each from the first of the folders that has it. Every id is kept, and
/// every text with its blanks.
ZELWBR3_EXPORT std::string WriteReport(const Document& oDocument, const std::vector<std::string>& folders);
/// The same for one folder.
ZELWBR3_EXPORT std::string WriteReport(const Document& oDocument, const std::string& sFolder);

}  // namespace ZELWbr3::Headless
