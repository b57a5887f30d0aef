#pragma once

#include "zelwbr3/base/Checked.h"

namespace ZELWbr3 {

class Document;

/// True when a key clicks the document's active element: Enter or Space on
/// anything that can be active but a text field, a list or a sub-frame, which
/// need both keys themselves.
bool ClicksActiveElement(const Document& oDocument, Long lKeyCode);

}  // namespace ZELWbr3
