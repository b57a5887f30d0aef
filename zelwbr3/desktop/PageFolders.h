#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Desktop {

/// The text of a page file whose style sheets, scripts and pictures are partly in
/// other folders of page files than its own: their names are replaced by their URLs,
/// each in the first folder that has it. No value if everything that the page names
/// is beside it, or the file cannot be read.
std::optional<std::string> WithFolders(const std::string& sPage, const std::vector<std::string>& folders);

}  // namespace ZELWbr3::Desktop
