#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"

#include <optional>
#include <string>
#include <string_view>

/// The host's command numbers that the control itself uses, and the links with a
/// command number in their id: "guicmd" and five digits.
namespace ZELWbr3::modCmdEnum {

inline constexpr int cmdBackupWizard = 35;
inline constexpr int cmdVolumes = 65;

/// Markup of a link to a command.
ZELWBR3_EXPORT std::string CommandLink(Long lCommand, std::string_view sLabel);
/// The command number in an element's id; no value if it is not a command link.
ZELWBR3_EXPORT std::optional<Long> LinkedCommand(std::string_view sID);

}  // namespace ZELWbr3::modCmdEnum
