#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"

namespace ZELWbr3 {

class Document;

/// True if a key clicks the document's active element: Enter or Space, except in
/// text fields, lists and sub-frames, which need both keys themselves.
ZELWBR3_EXPORT bool ClicksActiveElement(const Document& oDocument, Long lKeyCode);

}  // namespace ZELWbr3
