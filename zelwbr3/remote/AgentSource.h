#pragma once

#include <string_view>

namespace ZELWbr3::Remote {

/// The text of agent.js, which is built into the library.
extern const std::string_view AgentSource;

}  // namespace ZELWbr3::Remote
