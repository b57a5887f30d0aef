// The commands that change the instance's operational state: what is asked,
// what is called, and what the host and the page are told.

#include "tests/support/Told.h"

#include "tests/support/TestDatabase.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

constexpr int Offline = 2;
constexpr int Admin = 3;
constexpr int Online = 4;
constexpr int RestartUntil = 6;

constexpr const char* Kernel74 = "\"Version\": {\"Number\": 117702656}";  // 0x07040000
constexpr const char* Kernel73 = "\"Version\": {\"Number\": 117702655}";  // the one before

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

TEST(Shutdown, OfANewKernelAsksYesOrNo) {
  Main o(Named(Kernel74) + In(5));
  o.Answer("yes");
  o.Item(Offline);
  EXPECT_EQ(o.Lines(), SureYes + Changed("Shutdown()"));
  EXPECT_EQ(o.Text("txtState"), "Offline");
  EXPECT_EQ(o.Items(), "(&Offline) &Admin &Online | Restart &Until");
  EXPECT_EQ(o.Find("imgInstance")->getAttribute("data-wait"), "false");

  Main oDeclined(Named(Kernel74) + In(5));
  oDeclined.Item(Offline);
  EXPECT_EQ(oDeclined.Lines(), SureNo);
}

TEST(Shutdown, OfAnOldKernelAsksHow) {
  const auto Asked = [](const std::string& sAnswer) {
    Main o(Named(Kernel73) + In(5));
    if (!sAnswer.empty()) o.Answer(sAnswer);
    o.Item(Offline);
    return o.Lines();
  };
  EXPECT_EQ(Asked("ok"), "dialog frmShutdown -> ok\n" + Changed("Shutdown()"));
  EXPECT_EQ(Asked("quick"), "dialog frmShutdown -> quick\n" + Changed("ShutdownQuick()"));
  EXPECT_EQ(Asked("cancel"), "dialog frmShutdown -> cancel\n");
  EXPECT_EQ(Asked(""), "dialog frmShutdown -> cancel\n");

  Main oObjects(Named(Kernel73) + ", \"InstanceType\": 1" + In(5));
  oObjects.Item(Offline);
  EXPECT_EQ(oObjects.Lines(), SureNo) << "an object store is shut down in one way, whatever the kernel";
}

TEST(Shutdown, TurnsAutomaticLogBackupOffFirst) {
  const std::string sLogged = Named(Kernel74) + In(5, ", \"AutoLog\": true");

  Main oCancelled(sLogged);
  oCancelled.Item(Offline);
  EXPECT_EQ(oCancelled.Lines(), AutoLogBox("cancel"));
  EXPECT_EQ(oCancelled.Text("General.AutoLog.Val"), "On");

  Main oAgreed(sLogged);
  oAgreed.Answer("ok");
  oAgreed.Answer("yes");
  oAgreed.Item(Offline);
  EXPECT_EQ(oAgreed.Lines(), AutoLogBox("ok") + "call AutoLogOff()\n" + SureYes + Changed("Shutdown()"));

  // Not shut down after all, but the page must not go on saying "On".
  Main oDeclined(sLogged);
  oDeclined.Answer("ok");
  oDeclined.Item(Offline);
  EXPECT_EQ(oDeclined.Lines(), AutoLogBox("ok") + "call AutoLogOff()\n" + SureNo + "page Main\n");
  EXPECT_EQ(oDeclined.Text("General.AutoLog.Val"), "Off");

  Main oFailed(sLogged, "\"fails\": [\"AutoLogOff\"]");
  oFailed.Answer("ok");
  oFailed.Answer("yes");
  oFailed.Item(Offline);
  EXPECT_EQ(oFailed.Lines(),
            AutoLogBox("ok") + "call AutoLogOff()\nbox Error [exclamation ok]: -24988 SQL error -> ok\n");
  EXPECT_EQ(oFailed.Items(), "&Offline &Admin (&Online) | (Restart &Until)");
}

TEST(StateCommands, AdminAndOnlineAskNothing) {
  Main o(Named(Kernel74) + In(5));
  o.Item(Admin);
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
    Main o(Named(Kernel74) + In(3, ", \"StateText\": \"Admin\""), "\"" + sTrouble + "\": [\"Online\"]");
    o.Item(Online);
    EXPECT_EQ(o.Lines(),
              "begin\ncall Online()\nbox Error [exclamation ok]: -24988 SQL error -> ok\npage Main\ncomplete\n")
        << sTrouble;
    EXPECT_EQ(o.Text("txtState"), "Admin");
    EXPECT_EQ(o.Items(), "&Offline (&Admin) &Online | Restart &Until");
  }
}

TEST(StateCommands, ShowThatTheInstanceIsAtWork) {
  Main o(Named(Kernel74) + In(2));
  std::string sMeanwhile;
  o.OnCall = [&](const std::string&) {
    sMeanwhile = "pointer " + std::to_string(o.Platform.ScreenPointer().MousePointer()) + ", wait " +
                 o.Find("imgInstance")->getAttribute("data-wait");
  };
  o.Item(Online);
  EXPECT_EQ(sMeanwhile, "pointer 11, wait true");
  EXPECT_EQ(o.Platform.ScreenPointer().MousePointer(), 0);
  EXPECT_EQ(o.Find("imgInstance")->getAttribute("data-wait"), "false");
}

TEST(StateCommands, EndQuietlyWhenTheHostTakesThePageAwayMeanwhile) {
  Main oAsked(Named(Kernel74) + In(5));
  oAsked.OnAsked = [&](const std::string&) { oAsked.Browser.CleanUp(); };
  oAsked.Answer("yes");
  oAsked.Item(Offline);
  EXPECT_EQ(oAsked.Lines(), SureYes);

  Main oFailing(Named(Kernel74) + In(3), "\"fails\": [\"Online\"]");
  oFailing.OnCall = [&](const std::string&) { oFailing.Browser.CleanUp(); };
  oFailing.Item(Online);
  EXPECT_EQ(oFailing.Lines(), "begin\ncall Online()\n");

  // A page that is gone carries nothing out.
  Main oGone(Named(Kernel74) + In(3));
  const auto oPage = oGone.Browser.PageMain();
  oGone.Browser.CleanUp();
  oPage->Command(Admin);
  EXPECT_EQ(oGone.Lines(), "");
}

TEST(RestartUntil, AsksForATimeAndThenAgain) {
  const std::string sInstance = Named(Kernel74) + In(3);
  const std::string sEntry = "ok date=2026-02-03 time=04:05:06";
  const std::string sSure =
      "box Confirm Restart Until [exclamation yesno]: Are you sure you want to restart the database instance 'DEMO' "
      "until 2026-02-03 04:05:06?\n\nData after the specified time will be lost. -> ";

  Main oCancelled(sInstance);
  oCancelled.Item(RestartUntil);
  EXPECT_EQ(oCancelled.Lines(), "dialog frmOnlineUntil -> cancel\n");

  Main oDeclined(sInstance);
  oDeclined.Answer(sEntry);
  oDeclined.Item(RestartUntil);
  EXPECT_EQ(oDeclined.Lines(), "dialog frmOnlineUntil -> ok\n" + sSure + "no\n");

  Main oConfirmed(sInstance);
  oConfirmed.Answer(sEntry);
  oConfirmed.Answer("yes");
  oConfirmed.Item(RestartUntil);
  EXPECT_EQ(oConfirmed.Lines(),
            "dialog frmOnlineUntil -> ok\n" + sSure + "yes\n" + Changed("RestartUntil(\"2026-02-03T04:05:06\")"));
  EXPECT_EQ(oConfirmed.Text("txtState"), "Online");

  Main oFailing(sInstance, "\"fails\": [\"RestartUntil\"]");
  oFailing.Answer(sEntry);
  oFailing.Answer("yes");
  oFailing.Item(RestartUntil);
  EXPECT_EQ(oFailing.Lines(), "dialog frmOnlineUntil -> ok\n" + sSure +
                                  "yes\nbegin\ncall RestartUntil(\"2026-02-03T04:05:06\")\nbox Error [exclamation "
                                  "ok]: -24988 SQL error -> ok\npage Main\ncomplete\n");
}

TEST(RestartUntil, IsNotConfirmedWithATimeThatDoesNotExist) {
  Main o(Named(Kernel74) + In(3));
  o.Answer("ok date=2026-02-30 time=00:00:00");
  o.Item(RestartUntil);
  EXPECT_EQ(o.Lines(),
            "wrong: the dialog frmOnlineUntil cannot be confirmed: There is no 2026-02-30 00:00:00.\n"
            "dialog frmOnlineUntil -> cancel\n");
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
  };
  const std::string sLocked = "(&Offline) (&Admin) (&Online) | (Restart &Until)";
  for (int iStatus = 0; iStatus <= 5; ++iStatus) {
    for (int iRole = 0; iRole <= 3; ++iRole) {
      for (const bool bWarning : {false, true}) {
        const auto oDatabase = std::make_shared<TestDatabase>();
        oDatabase->State->status = iStatus;
        oDatabase->Role = iRole;
        oDatabase->StandbyWarning = bWarning;
        Main o(std::static_pointer_cast<ZELLib3::Database>(oDatabase));
        EXPECT_EQ(o.Items(), iRole >= 2 && !bWarning ? sLocked : Expected[iStatus])
            << "status " << iStatus << ", role " << iRole << ", warning " << bWarning;
      }
    }
  }
}

TEST(StateItems, StayAsTheyWereInAnUnknownState) {
  const auto oDatabase = std::make_shared<TestDatabase>();
  oDatabase->State->status = 3;
  Main o(std::static_pointer_cast<ZELLib3::Database>(oDatabase));
  const std::string sBefore = o.Items();
  for (const int iStatus : {6, 7, -1}) {
    oDatabase->State->status = iStatus;
    o.Key(116);
    EXPECT_EQ(o.Items(), sBefore) << iStatus;
  }
  oDatabase->Role = 2;
  o.Key(116);
  EXPECT_EQ(o.Items(), "(&Offline) (&Admin) (&Online) | (Restart &Until)");
}

}  // namespace
}  // namespace ZELWbr3::Testing
