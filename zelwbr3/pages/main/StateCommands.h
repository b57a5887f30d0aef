#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/framework/FrontBoxes.h"
#include "zelwbr3/platform/FCommandlist.h"
#include "zelwbr3/platform/UserLocale.h"

#include <functional>

/// The commands that change the instance's operational state: their items in the
/// main page's command list, and the questions asked before they are carried out.
namespace ZELWbr3::StateCommands {

inline constexpr int KeyOffline = 2;
inline constexpr int KeyAdmin = 3;
inline constexpr int KeyOnline = 4;
inline constexpr int KeySeparator = 5;
inline constexpr int KeyRestartUntil = 6;

/// Creates the items unless the page already has its list, and enables those
/// that the instance's state allows.
void FillCommandlist(ZELCmd3::FCommandlist& oCommandlist, Long lPageType, ZELLib3::Database& oDatabase);

/// The result of asking.
struct Decision {
  /// The operation of the instance to carry out; empty if there is none.
  std::function<bool(ZELLib3::Database&)> Operation = {};
  /// The instance is no longer as the page shows it, regardless of the decision.
  bool InstanceChanged = false;
};

/// Carries out an operation that may take long, and returns its result. If it
/// failed, the error has already been shown.
using Operator = std::function<bool(const std::function<bool()>& oOperation)>;

/// Asks the questions of the command with that key; declines if the key is not a
/// state command. Turns off automatic log backup with oOperate if the user
/// agrees, because no shutdown is possible with it.
Decision Ask(Long lKey, ZELLib3::Database& oDatabase, FrontBoxes& oBoxes, const UserLocale& oLocale,
             const Operator& oOperate);

}  // namespace ZELWbr3::StateCommands
