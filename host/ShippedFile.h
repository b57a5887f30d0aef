#pragma once

#include <filesystem>
#include <string>

namespace ZELWbr3::Host {

/// Where a file or folder is that the programs are shipped with. An installed
/// program looks next to itself, relative to its own executable, and then in the
/// folder it was installed to; what stands in a source or build tree is used only
/// by a program that runs in that build tree. sName is relative to the programs'
/// shared folder, oInBuildTree is its counterpart in the trees.
std::filesystem::path ShippedFile(const std::string& sName, const std::filesystem::path& oInBuildTree);

}  // namespace ZELWbr3::Host
