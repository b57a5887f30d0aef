#include "pages/main/StateCommands.h"

namespace ZELWbr3::StateCommands {

namespace {

using ZELCmd3::CommandItem;

// Picture numbers of the host's image resource.
constexpr int PictureAdmin = 40;
constexpr int PictureOffline = 41;
constexpr int PictureOnline = 42;
constexpr int PictureRestartUntil = 109;

/// What a state allows.
struct Enabled {
  bool Offline;
  bool Admin;
  bool Online;
  bool RestartUntil;
};

/// The commands of the states 0 to 5. Only admin state itself disables Admin,
/// and the state between admin and online disables nothing.
constexpr Enabled ByStatus[] = {
    {true, true, true, true},    //
    {false, true, true, true},   //
    {false, true, true, true},   //
    {true, false, true, true},   //
    {true, true, true, true},    //
    {true, true, false, false},  //
};

/// On a standby only a pending warning lets the state be changed.
bool IsLocked(ZELLib3::Database& oDatabase) {
  const Long lRole = oDatabase.HotStandbyRole();
  return (lRole == 2 || lRole == 3) && !oDatabase.HotStandbyWarning();
}

}  // namespace

void FillCommandlist(ZELCmd3::FCommandlist& oCommandlist, Long lPageType, ZELLib3::Database& oDatabase) {
  if (!oCommandlist.HasList(lPageType)) {
    oCommandlist.Add(lPageType, {KeyOffline, "&Offline", PictureOffline});
    oCommandlist.Add(lPageType, {KeyAdmin, "&Admin", PictureAdmin});
    oCommandlist.Add(lPageType, {KeyOnline, "&Online", PictureOnline});
    oCommandlist.Add(lPageType, CommandItem::MakeSeparator(KeySeparator));
    oCommandlist.Add(lPageType, {KeyRestartUntil, "Restart &Until", PictureRestartUntil});
  }

  const Long lStatus = oDatabase.StateInfo()->Status();
  Enabled oEnabled{};
  if (!IsLocked(oDatabase)) {
    if (lStatus < 0 || lStatus >= static_cast<int>(std::size(ByStatus))) return;
    oEnabled = ByStatus[lStatus];
  }
  oCommandlist.Enable(lPageType, KeyOffline, oEnabled.Offline);
  oCommandlist.Enable(lPageType, KeyAdmin, oEnabled.Admin);
  oCommandlist.Enable(lPageType, KeyOnline, oEnabled.Online);
  oCommandlist.Enable(lPageType, KeyRestartUntil, oEnabled.RestartUntil);
}

}  // namespace ZELWbr3::StateCommands
