#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/framework/FrontBoxes.h"
#include "zelwbr3/platform/FCommandlist.h"
#include "zelwbr3/platform/UserLocale.h"

#include <functional>

/// The commands that change the instance's operational state: as items of the
/// main page's command list, and what each asks before it is carried out.
namespace ZELWbr3::StateCommands {

inline constexpr int KeyOffline = 2;
inline constexpr int KeyAdmin = 3;
inline constexpr int KeyOnline = 4;
inline constexpr int KeySeparator = 5;
inline constexpr int KeyRestartUntil = 6;

/// Creates the items unless the page has its list already, and enables those
/// that the instance's state allows.
void FillCommandlist(ZELCmd3::FCommandlist& oCommandlist, Long lPageType, ZELLib3::Database& oDatabase);

/// What came out of asking.
struct Decision {
  /// The operation of the instance that is to be carried out; empty when there
  /// is none.
  std::function<bool(ZELLib3::Database&)> Operation = {};
  /// The instance is no longer as the page shows it, whatever was decided.
  bool InstanceChanged = false;
};

/// Carries out an operation that may take long, and answers as it does. A
/// failure has been shown by then.
using Operator = std::function<bool(const std::function<bool()>& oOperation)>;

/// Asks what has to be asked before the command with that key, which is
/// declined when it is none of a state command. Turns automatic log backup off
/// where the user agrees to that, because no shutdown is possible with it; that
/// is done by oOperate.
Decision Ask(Long lKey, ZELLib3::Database& oDatabase, FrontBoxes& oBoxes, const UserLocale& oLocale,
             const Operator& oOperate);

}  // namespace ZELWbr3::StateCommands
