// The commands that change the instance's operational state: what is asked,
// what is called, and what the host and the page are told.

#include "tests/support/Told.h"

#include "tests/support/TestDatabase.h"
#include "zelwbr3/pages/main/PageMain.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

constexpr int Offline = 2;
constexpr int Admin = 3;
constexpr int Online = 4;
constexpr int RestartUntil = 6;

const std::string Kernel74 = "\"Version\": {\"Number\": 117702656}";  // 0x07040000
const std::string Kernel73 = "\"Version\": {\"Number\": 117702655}";  // the one before

std::string Named(const std::string& sMembers) { return "\"InstanceName\": \"DEMO\", " + sMembers; }

std::string In(int iStatus, const std::string& sMore = "") {
  return ", \"StateInfo\": {\"InfoAvailable\": true, \"Status\": " + std::to_string(iStatus) + sMore + "}";
}

/// A control that shows the main page.
class Main : public Told {
 public:
  template <typename... Arguments>
  explicit Main(const Arguments&... oArguments) : Told(oArguments...) {
    Show(Browser.PageMain());
    Lines();
  }
};

constexpr const char* SureYes =
    "box Confirm Database Shut Down [question yesno]: Are you sure you want to shut down the database instance "
    "'DEMO'? -> yes\n";
constexpr const char* SureNo =
    "box Confirm Database Shut Down [question yesno]: Are you sure you want to shut down the database instance "
    "'DEMO'? -> no\n";

std::string AutoLogBox(const std::string& sAnswer) {
  return "box Confirm Automatic Log Backup Off [exclamation okcancel]: Shut down of database instance 'DEMO' is not "
         "possible while automatic log backup is activated. Choose 'OK' to turn automatic log backup off and continue "
         "with shut down. -> " +
         sAnswer + "\n";
}

std::string Changed(const std::string& sCall) { return "begin\ncall " + sCall + "\npage Main\ncomplete\n"; }

/// What an item's click led to, answered so: what was told, then what the page
/// shows of it.
std::string Did(const std::string& sInstance, int iItem, const std::vector<std::string>& answers,
                const std::string& sRecording = "") {
  Main o(Named(sInstance), sRecording);
  for (const std::string& sAnswer : answers) o.Answer(sAnswer);
  o.Item(iItem);
  EXPECT_EQ(o.Find("imgInstance")->getAttribute("data-wait"), "false");
  EXPECT_EQ(o.Platform.ScreenPointer().MousePointer(), 0);
  return o.Lines() + o.Text("txtState") + ", log backup " + o.Text("General.AutoLog.Val") + ": " + o.Items();
}

const std::string StillOnline = ", log backup Off: &Offline &Admin (&Online) | (Restart &Until)";
const std::string NowOffline = "Offline, log backup Off: (&Offline) &Admin &Online | Restart &Until";
const std::string ErrorBox = "box Error [exclamation ok]: -24988 SQL error -> ok\n";

TEST(Shutdown, AsksANewKernelYesOrNoAndAnOldOneHow) {
  const std::string sNew = Kernel74 + In(5);
  const std::string sOld = Kernel73 + In(5);
  EXPECT_EQ(Did(sNew, Offline, {"yes"}), SureYes + Changed("Shutdown()") + NowOffline);
  EXPECT_EQ(Did(sNew, Offline, {}), SureNo + StillOnline);
  EXPECT_EQ(Did(sOld, Offline, {"ok"}), "dialog frmShutdown -> ok\n" + Changed("Shutdown()") + NowOffline);
  EXPECT_EQ(Did(sOld, Offline, {"quick"}), "dialog frmShutdown -> quick\n" + Changed("ShutdownQuick()") + NowOffline);
  EXPECT_EQ(Did(sOld, Offline, {}), "dialog frmShutdown -> cancel\n" + StillOnline);
  EXPECT_EQ(Did(Kernel73 + ", \"InstanceType\": 1" + In(5), Offline, {}), SureNo + StillOnline)
      << "an object store is shut down in one way, whatever the kernel";
}

TEST(Shutdown, TurnsAutomaticLogBackupOffFirst) {
  const std::string sLogged = Kernel74 + In(5, ", \"AutoLog\": true");
  const std::string sLoggedStill = ", log backup On: &Offline &Admin (&Online) | (Restart &Until)";
  const std::string sOff = AutoLogBox("ok") + "call AutoLogOff()\n";
  EXPECT_EQ(Did(sLogged, Offline, {}), AutoLogBox("cancel") + sLoggedStill);
  EXPECT_EQ(Did(sLogged, Offline, {"ok", "yes"}), sOff + SureYes + Changed("Shutdown()") + NowOffline);
  // Not shut down after all, but the page must not go on saying "On".
  EXPECT_EQ(Did(sLogged, Offline, {"ok"}), sOff + SureNo + "page Main\n" + StillOnline);
  EXPECT_EQ(Did(sLogged, Offline, {"ok", "yes"}, "\"fails\": [\"AutoLogOff\"]"), sOff + ErrorBox + sLoggedStill);
}

TEST(StateCommands, AdminAndOnlineAskNothing) {
  Main o(Named(Kernel74) + In(5));
  std::string sMeanwhile;
  o.OnCall = [&](const std::string&) {
    sMeanwhile = "pointer " + std::to_string(o.Platform.ScreenPointer().MousePointer()) + ", wait " +
                 o.Find("imgInstance")->getAttribute("data-wait");
  };
  o.Item(Admin);
  EXPECT_EQ(sMeanwhile, "pointer 11, wait true");
  EXPECT_EQ(o.Lines(), Changed("Admin()"));
  EXPECT_EQ(o.Items(), "&Offline (&Admin) &Online | Restart &Until");
  o.Item(Online);
  EXPECT_EQ(o.Lines(), Changed("Online()"));
  EXPECT_EQ(o.Items(), "&Offline &Admin (&Online) | (Restart &Until)");
  o.Item(Online);  // disabled
  EXPECT_EQ(o.Lines(), "");
}

TEST(StateCommands, ShowAFailureAndTheStateThatIsTrueThen) {
  for (const std::string sTrouble : {"fails", "raises"}) {
    EXPECT_EQ(Did(Kernel74 + In(3, ", \"StateText\": \"Admin\""), Online, {}, "\"" + sTrouble + "\": [\"Online\"]"),
              "begin\ncall Online()\n" + ErrorBox +
                  "page Main\ncomplete\nAdmin, log backup Off: &Offline (&Admin) &Online | Restart &Until");
  }
}

TEST(StateCommands, EndQuietlyWhenTheHostTakesThePageAwayMeanwhile) {
  Main oAsked(Named(Kernel74) + In(5));
  oAsked.OnAsked = [&](const std::string&) { oAsked.Browser.CleanUp(); };
  oAsked.Answer("yes");
  oAsked.Item(Offline);
  EXPECT_EQ(oAsked.Lines(), SureYes);

  Main oFailing(Named(Kernel74) + In(3), "\"fails\": [\"Online\"]");
  oFailing.OnCall = [&](const std::string&) { oFailing.Browser.CleanUp(); };
  const auto oPage = oFailing.Browser.PageMain();
  oFailing.Item(Online);
  EXPECT_EQ(oFailing.Lines(), "begin\ncall Online()\n");

  // A page that is gone carries nothing out.
  oPage->Command(Admin);
  EXPECT_EQ(oFailing.Lines(), "");
}

TEST(RestartUntil, AsksForATimeAndThenAgain) {
  const std::string sInstance = Kernel74 + In(3);
  const std::string sEntry = "ok date=2026-02-03 time=04:05:06";
  const std::string sStill = ", log backup Off: &Offline (&Admin) &Online | Restart &Until";
  const std::string sSure =
      "dialog frmOnlineUntil -> ok\nbox Confirm Restart Until [exclamation yesno]: Are you sure you want to restart "
      "the database instance 'DEMO' until 2026-02-03 04:05:06?\n\nData after the specified time will be lost. -> ";
  const std::string sCall = "RestartUntil(\"2026-02-03T04:05:06\")";
  EXPECT_EQ(Did(sInstance, RestartUntil, {}), "dialog frmOnlineUntil -> cancel\n" + sStill);
  EXPECT_EQ(Did(sInstance, RestartUntil, {"ok date=2026-02-30 time=00:00:00"}),
            "wrong: the dialog frmOnlineUntil cannot be confirmed: There is no 2026-02-30 00:00:00.\n"
            "dialog frmOnlineUntil -> cancel\n" +
                sStill);
  EXPECT_EQ(Did(sInstance, RestartUntil, {sEntry}), sSure + "no\n" + sStill);
  EXPECT_EQ(Did(sInstance, RestartUntil, {sEntry, "yes"}), sSure + "yes\n" + Changed(sCall) + "Online" + StillOnline);
  EXPECT_EQ(Did(sInstance, RestartUntil, {sEntry, "yes"}, "\"fails\": [\"RestartUntil\"]"),
            sSure + "yes\nbegin\ncall " + sCall + "\n" + ErrorBox + "page Main\ncomplete\n" + sStill);
}

// Every state with every kind of instance: alone, a standby, a standby with a
// pending warning.
TEST(StateItems, FollowTheInstancesState) {
  const char* const Expected[] = {
      "&Offline &Admin &Online | Restart &Until",      // 0
      "(&Offline) &Admin &Online | Restart &Until",    // 1
      "(&Offline) &Admin &Online | Restart &Until",    // 2
      "&Offline (&Admin) &Online | Restart &Until",    // 3
      "&Offline &Admin &Online | Restart &Until",      // 4
      "&Offline &Admin (&Online) | (Restart &Until)",  // 5
      "&Offline &Admin (&Online) | (Restart &Until)",  // no state: as they were
  };
  const std::string sLocked = "(&Offline) (&Admin) (&Online) | (Restart &Until)";
  for (const auto& [iRole, bWarning] :
       {std::pair(0, false), {1, false}, {2, false}, {3, false}, {2, true}, {3, true}}) {
    SCOPED_TRACE("role " + std::to_string(iRole) + (bWarning ? " with a warning" : ""));
    const auto oDatabase = std::make_shared<TestDatabase>();
    oDatabase->Role = iRole;
    oDatabase->StandbyWarning = bWarning;
    Main o(std::static_pointer_cast<ZELLib3::Database>(oDatabase));
    for (int iStatus = 0; iStatus <= 6; ++iStatus) {
      oDatabase->State->status = iStatus;
      o.Key(116);
      EXPECT_EQ(o.Items(), iRole >= 2 && !bWarning ? sLocked : Expected[iStatus]) << iStatus;
    }
  }
}

}  // namespace
}  // namespace ZELWbr3::Testing
