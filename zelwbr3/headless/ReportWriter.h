#pragma once

#include "zelwbr3/dom/Document.h"

#include <string>

namespace ZELWbr3::Headless {

/// A document as HTML that needs no other file: the style sheets and scripts
/// that it names in sFolder stand in it. Every id and every text is kept to the
/// blank.
std::string WriteReport(const Document& oDocument, const std::string& sFolder);

}  // namespace ZELWbr3::Headless
