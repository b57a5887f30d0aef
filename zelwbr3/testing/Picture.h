#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Document.h"

#include <string>

namespace ZELWbr3::Testing {

/// What a person sees of a document, as lines of text. Hidden parts are left
/// out, but the tabs that are not in front follow the one that is.
///
///     <Close>#btnClose        a button; <(Close)> when disabled
///     [TABLES]#ITEM_TABLES    what can be clicked
///     Tabs: *[General] [Usage] ([I/O])    in front, not in front, disabled
///     {fill-bar percent=47}   an embedded object
///     -- Sessions #tabSessions            a table, then its rows
///       G CACHE_SIZE | 10,000
///
/// Signs that the style sheet draws for a class stand as letters: the group of
/// a parameter (G, E, S, I, –), the triangle of a row that unfolds (> v -), the
/// arrow of a node, the mark of a failure. "~" is a cell with a blank, and what
/// a person cannot see in a text is escaped.
ZELWBR3_EXPORT std::string Picture(const Document& oDocument);

}  // namespace ZELWbr3::Testing
