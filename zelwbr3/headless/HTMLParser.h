#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Document.h"

#include <memory>
#include <string>
#include <string_view>

namespace ZELWbr3::Headless {

/// The document of an HTML text, parsed by the rules that browsers follow.
ZELWBR3_EXPORT std::shared_ptr<Document> ParseHTML(std::string_view sHTML);

/// The document of a page file; null if the file is empty or cannot be read.
ZELWBR3_EXPORT std::shared_ptr<Document> LoadPageFile(const std::string& sPath);
/// The document to show instead of a page file that cannot be read.
ZELWBR3_EXPORT std::shared_ptr<Document> PageNotFound(const std::string& sPath);

}  // namespace ZELWbr3::Headless
