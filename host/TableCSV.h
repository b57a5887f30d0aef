#pragma once

#include "zelwbr3/dom/Document.h"

#include <string>

namespace ZELWbr3::Host {

/// The rows of a page's table as a reader sees them, headings first, as CSV (RFC
/// 4180: fields quoted where needed, lines ended by CR LF). Throws
/// std::invalid_argument, which names the id, if there is no such table.
std::string TableCSV(Document& oDocument, const std::string& sID);

}  // namespace ZELWbr3::Host
