#pragma once

#include "framework/ZELLib3/Database.h"
#include "platform/FCommandlist.h"

/// The commands that change the instance's operational state, as items of the
/// main page's command list.
namespace ZELWbr3::StateCommands {

inline constexpr int KeyOffline = 2;
inline constexpr int KeyAdmin = 3;
inline constexpr int KeyOnline = 4;
inline constexpr int KeySeparator = 5;
inline constexpr int KeyRestartUntil = 6;

/// Creates the items unless the page has its list already, and enables those
/// that the instance's state allows.
void FillCommandlist(ZELCmd3::FCommandlist& oCommandlist, Long lPageType, ZELLib3::Database& oDatabase);

}  // namespace ZELWbr3::StateCommands
