#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ZELWbr3::Desktop {

// URLs of what is in a compiled help file have two forms. The usual one,
// mk:@MSITStore:FILE::/TOPIC.htm, has no path in the sense of a browser:
// nothing in a topic that is relative to it, such as its style sheet, can be
// found. The other one, mk:///@MSITStore:FILE::/TOPIC.htm, has one.

/// Where the path of FILE is part of the path of the URL it is one single
/// segment, so that no ".." in a topic leads to another file.
std::string HelpURL(std::string_view sCHMPath, std::string_view sObject);

/// What a URL of either form names in one help file; none when it names
/// something elsewhere.
std::optional<std::string> ObjectOf(const std::string& sURL, std::string_view sCHMPath);

/// True for the usual form.
bool IsUsualHelpURL(std::string_view sURL);

}  // namespace ZELWbr3::Desktop
