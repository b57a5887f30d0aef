#pragma once

#include "zelwbr3/dom/Document.h"

#include <string>

namespace ZELWbr3::Headless {

/// A document as self-contained HTML: the style sheets and scripts that it loads
/// from sFolder are inlined. Every id is kept, and every text with its blanks.
std::string WriteReport(const Document& oDocument, const std::string& sFolder);

}  // namespace ZELWbr3::Headless
