#pragma once

#include <optional>
#include <string>

namespace ZELWbr3 {
class DialogBox;
}

namespace ZELWbr3::Host {

// What zelview asks in a box with one field. No value when the user cancels.

/// sRefused says why another one is needed; empty for the first.
std::optional<std::string> AskPassword(DialogBox& oBox, const std::string& sInstance, const std::string& sRefused);
/// The address of a server.
std::optional<std::string> AskServer(DialogBox& oBox);
/// The number of a message, or another topic of the help file.
std::optional<std::string> AskTopic(DialogBox& oBox);

}  // namespace ZELWbr3::Host
