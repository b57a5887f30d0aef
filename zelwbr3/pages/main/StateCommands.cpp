#include "zelwbr3/pages/main/StateCommands.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/framework/modPicture.h"
#include "zelwbr3/pages/main/frmOnlineUntil.h"
#include "zelwbr3/pages/main/frmShutdown.h"

namespace ZELWbr3::StateCommands {

namespace {

using ZELCmd3::CommandItem;

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

/// On a standby, the state can only be changed while a warning is pending.
bool IsLocked(ZELLib3::Database& oDatabase) {
  const Long lRole = oDatabase.HotStandbyRole();
  return (lRole == 2 || lRole == 3) && !oDatabase.HotStandbyWarning();
}

using Operation = bool (ZELLib3::Database::*)();

Decision Confirmed(Operation oOperation) {
  return {[oOperation](ZELLib3::Database& oDatabase) { return (oDatabase.*oOperation)(); }};
}

/// The instance's name as part of a sentence.
std::string NameOf(ZELLib3::Database& oDatabase) { return Text::Isolated(oDatabase.InstanceName()); }

bool IsYes(MessageBox::Answer eAnswer) { return eAnswer == MessageBox::Answer::Yes; }

Decision AskShutdown(ZELLib3::Database& oDatabase, FrontBoxes& oBoxes) {
  const std::string sName = NameOf(oDatabase);
  // These can only be shut down in one way.
  if (Given(oDatabase.Version())->Number() >= ZELLib3::Kernel::V74 ||
      oDatabase.InstanceType() == ZELLib3::InstanceType::ObjectStore) {
    const auto eAnswer =
        oBoxes.Show("Are you sure you want to shut down the database instance '" + sName + "'?",
                    "Confirm Database Shut Down", MessageBox::Buttons::YesNo, MessageBox::Icon::Question);
    return IsYes(eAnswer) ? Confirmed(&ZELLib3::Database::Shutdown) : Decision{};
  }
  const auto oChoice = frmShutdown(oBoxes).Shutdown(sName);
  if (oChoice.Cancelled) return {};
  return Confirmed(oChoice.Quick ? &ZELLib3::Database::ShutdownQuick : &ZELLib3::Database::Shutdown);
}

Decision AskOffline(ZELLib3::Database& oDatabase, FrontBoxes& oBoxes, const Operator& oOperate) {
  if (!Given(oDatabase.StateInfo())->AutoLog()) return AskShutdown(oDatabase, oBoxes);

  const auto eAnswer =
      oBoxes.Show("Shut down of database instance '" + NameOf(oDatabase) +
                      "' is not possible while automatic log backup is activated. "
                      "Choose 'OK' to turn automatic log backup off and continue with shut down.",
                  "Confirm Automatic Log Backup Off", MessageBox::Buttons::OKCancel, MessageBox::Icon::Exclamation);
  if (eAnswer != MessageBox::Answer::OK) return {};
  if (!oOperate([&] { return oDatabase.AutoLogOff(); })) return {};
  Decision oDecision = AskShutdown(oDatabase, oBoxes);
  oDecision.InstanceChanged = true;
  return oDecision;
}

/// What admin state does to the sessions, as the end of a sentence.
std::string SessionsShutOut(ZELLib3::Database& oDatabase, const UserLocale& oLocale) {
  const auto oState = Given(oDatabase.StateInfo());
  if (oState->Status() == ZELLib3::Status::Offline) return ".";
  if (!oState->InfoAvailable()) return ": all sessions will be shut out.";
  const Long lSessions = oState->SessionsUsed();
  if (lSessions <= 0) return "; no session is open at the moment.";
  if (lSessions == 1) return ": 1 session will be shut out.";
  return ": " + modFormat::Grouped(lSessions, oLocale) + " sessions will be shut out.";
}

Decision AskAdmin(ZELLib3::Database& oDatabase, FrontBoxes& oBoxes, const UserLocale& oLocale) {
  const auto eAnswer = oBoxes.Show("Are you sure you want to bring the database instance '" + NameOf(oDatabase) +
                                       "' to admin state?\n\nOnly its administrator can work with it then" +
                                       SessionsShutOut(oDatabase, oLocale),
                                   "Confirm Admin", MessageBox::Buttons::YesNo, MessageBox::Icon::Question);
  return IsYes(eAnswer) ? Confirmed(&ZELLib3::Database::Admin) : Decision{};
}

Decision AskRestartUntil(ZELLib3::Database& oDatabase, FrontBoxes& oBoxes, const UserLocale& oLocale) {
  const std::string sName = NameOf(oDatabase);
  const auto dUntil = frmOnlineUntil(oBoxes).OnlineUntil(sName);
  if (!dUntil) return {};
  const auto eAnswer =
      oBoxes.Show("Are you sure you want to restart the database instance '" + sName + "' until " +
                      modFormat::GeneralDate(*dUntil, oLocale) + "?\n\nData after the specified time will be lost.",
                  "Confirm Restart Until", MessageBox::Buttons::YesNo, MessageBox::Icon::Exclamation);
  if (!IsYes(eAnswer)) return {};
  return {[dUntil = *dUntil](ZELLib3::Database& oInstance) { return oInstance.RestartUntil(dUntil); }};
}

}  // namespace

void FillCommandlist(ZELCmd3::FCommandlist& oCommandlist, Long lPageType, ZELLib3::Database& oDatabase) {
  if (!oCommandlist.HasList(lPageType)) {
    oCommandlist.Add(lPageType, CommandItem::MakeChanging(KeyOffline, "&Offline", modPicture::Offline));
    oCommandlist.Add(lPageType, CommandItem::MakeChanging(KeyAdmin, "&Admin", modPicture::Admin));
    oCommandlist.Add(lPageType, CommandItem::MakeChanging(KeyOnline, "&Online", modPicture::Online));
    oCommandlist.Add(lPageType, CommandItem::MakeSeparator(KeySeparator));
    oCommandlist.Add(lPageType, CommandItem::MakeChanging(KeyRestartUntil, "Restart &Until", modPicture::RestartUntil));
  }

  const Long lStatus = Given(oDatabase.StateInfo())->Status();
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

Decision Ask(Long lKey, ZELLib3::Database& oDatabase, FrontBoxes& oBoxes, const UserLocale& oLocale,
             const Operator& oOperate) {
  switch (lKey) {
    case KeyOffline:
      return AskOffline(oDatabase, oBoxes, oOperate);
    case KeyAdmin:
      return AskAdmin(oDatabase, oBoxes, oLocale);
    case KeyOnline:
      return Confirmed(&ZELLib3::Database::Online);
    case KeyRestartUntil:
      return AskRestartUntil(oDatabase, oBoxes, oLocale);
    default:
      return {};
  }
}

}  // namespace ZELWbr3::StateCommands
