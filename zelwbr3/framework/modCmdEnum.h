#pragma once

#include "zelwbr3/base/Checked.h"

#include <optional>
#include <string>
#include <string_view>

/// The host's command numbers that the control itself writes, and the links
/// that carry a number in their id: "guicmd" and five digits.
namespace ZELWbr3::modCmdEnum {

inline constexpr int cmdBackupWizard = 35;
inline constexpr int cmdVolumes = 65;

/// Markup of a link to a command.
std::string CommandLink(Long lCommand, std::string_view sLabel);
/// The command of an element's id; no value when it is none of a link.
std::optional<Long> LinkedCommand(std::string_view sID);

}  // namespace ZELWbr3::modCmdEnum
