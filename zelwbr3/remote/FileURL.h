#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ZELWbr3::Remote {

/// The URL of what a browser is asked to show: a path, in which a backslash
/// separates folders as a slash does and any character may stand, becomes a
/// file URL; "about:blank" and URLs with a scheme stay as they are. A scheme
/// has two letters at least, so a drive letter is not one.
std::string MakeURL(std::string_view sPathOrURL);

/// The absolute path of the file that a path names, with slashes; empty for a
/// URL with a scheme.
std::string FilePath(std::string_view sPathOrURL);

/// A path as part of a URL: everything but letters, digits and "/-._~" is
/// percent-encoded.
std::string EscapePath(std::string_view sPath);

/// The scheme of a URL in lower case; empty when there is none.
std::string SchemeOf(std::string_view sURL);

/// The URL with the number of a navigation in its query, where the document
/// itself can read it: the one reliable sign of which navigation it belongs to.
std::string WithSerial(std::string_view sURL, std::uint32_t iSerial);
std::string WithoutSerial(std::string_view sURL);

/// The number that WithSerial put into a URL, 0 when there is none.
std::uint32_t SerialOf(std::string_view sURL);

}  // namespace ZELWbr3::Remote
