#include "tests/web/PlayedShell.h"

#include "zelwbr3/instances/sqlite/sample/SampleDatabase.h"
#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Web {
namespace {

using namespace std::chrono_literals;

class SessionsTest : public testing::Test {
 protected:
  explicit SessionsTest(std::chrono::milliseconds oAbsence = 60s) : Site({.Absence = oAbsence}) {}

  std::string Cookie() { return Site.Cookie(); }
  const std::string Main = R"(["page","Main",)";
  const std::string Activity = R"(["page","InfoActivity",)";

  Served Site;
};

// Half of them on a recording, half on one database file.
TEST(SessionsOfTwoInstancesTest, TwentyAtATimeShowTheirPages) {
  const Testing::TempFolder oFolder;
  SQLite::MakeSample(oFolder.Path("sample.db"));
  Served::What oWhat;
  oWhat.Instances.push_back("sqlite:" + oFolder.Path("sample.db"));
  Served Site(oWhat);
  const std::string sCookie = Site.Cookie();
  std::vector<std::thread> threads;
  for (int i = 0; i < 20; ++i) {
    threads.emplace_back([&, i] {
      const auto oShell = std::make_shared<PlayedShell>(Site, "load" + std::to_string(i), i % 2);
      oShell->Connect(sCookie);
      EXPECT_NE(oShell->Await(R"(["page","Main",)").find(i % 2 == 0 ? "DEMO - Overview" : "sample.db - Overview"),
                std::string::npos);
      for (const char* sPage : {"InfoActivity", "Main", "Sessions", "DataArea", "SysInfos", "Main"}) {
        oShell->Say(std::string(R"(["show",")") + sPage + "\"]");
        EXPECT_NE(oShell->Await(std::string(R"(["page",")") + sPage), "nothing came");
        oShell->Say("[\"agent\",1]\n[\"key\",2,27]");  // of the first page in that frame, or of one that is gone
      }
      oShell->Disconnect();
    });
  }
  for (std::thread& oThread : threads) oThread.join();
}

TEST_F(SessionsTest, WhatALostSocketHadIsSentAgainAndNothingTwice) {
  const std::string sCookie = Cookie();
  const auto oFirst = std::make_shared<PlayedShell>(Site);
  oFirst->Connect(sCookie);
  oFirst->Await(Main);
  oFirst->Say(R"(["show","InfoActivity"])");
  oFirst->Disconnect();
  // Whatever is made meanwhile waits for the next socket.
  const auto oSecond = std::make_shared<PlayedShell>(Site);
  oSecond->Connect(sCookie, oFirst->Session(), oFirst->Got, true);
  EXPECT_TRUE(oSecond->Await(R"(["welcome")").find(oFirst->Session()) != std::string::npos);
  EXPECT_EQ(oSecond->Await(Activity).substr(0, Activity.size()), Activity);
  oSecond->Say(R"(["ping"])");
  EXPECT_EQ(oSecond->Await(R"(["pong")"), R"(["pong"])");
  oSecond->Disconnect();

  // Another load of the shell: everything is drawn again.
  const auto oReloaded = std::make_shared<PlayedShell>(Site, "reloaded");
  oReloaded->Connect(sCookie, oFirst->Session());
  EXPECT_TRUE(oReloaded->Await(R"(["pages")").find("Overview") != std::string::npos);
  EXPECT_TRUE(oReloaded->Await(R"(["go",1,)").find("InfoActivity.htm") != std::string::npos);

  // Neither its number without its cookie, nor a tab that was copied, gets it.
  for (const std::string& sOther : {Cookie(), sCookie}) {
    const auto oOther = std::make_shared<PlayedShell>(Site, "other");
    oOther->Connect(sOther, oFirst->Session());
    oOther->Await(Main);
    EXPECT_NE(oOther->Session(), oFirst->Session());
    oOther->Disconnect();
  }
  oReloaded->Disconnect();
}

class ForsakenSessionsTest : public SessionsTest {
 protected:
  ForsakenSessionsTest() : SessionsTest(200ms) {}
};

TEST_F(ForsakenSessionsTest, ASessionEndsWithAnOpenBoxWhenNobodyComesBack) {
  const std::string sCookie = Cookie();
  const auto oShell = std::make_shared<PlayedShell>(Site);
  oShell->Connect(sCookie);
  oShell->Await(Main);
  oShell->Say(R"(["item","2"])");
  EXPECT_TRUE(oShell->Await(R"(["box")").find("DEMO") != std::string::npos);
  oShell->Disconnect();
  Site.AwaitSessions(0);
  // Who shows an ended one has to begin anew.
  const auto oLate = std::make_shared<PlayedShell>(Site);
  oLate->Connect(sCookie, oShell->Session(), oShell->Got, true);
  EXPECT_TRUE(oLate->IsClosed());
  oLate->Disconnect();
}

}  // namespace
}  // namespace ZELWbr3::Web
