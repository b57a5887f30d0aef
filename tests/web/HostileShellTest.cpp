// Shells that say what no shell of ours says, or when none would.

#include "tests/web/PlayedShell.h"

#include <gtest/gtest.h>

#include <random>

namespace ZELWbr3::Web {
namespace {

using namespace std::chrono_literals;

class HostileShellTest : public testing::Test {
 protected:
  std::shared_ptr<PlayedShell> Begin() {
    const auto oShell = std::make_shared<PlayedShell>(Site);
    oShell->Connect(Cookie);
    oShell->Await(Main);
    return oShell;
  }

  const std::string Main = R"(["page","Main",)";
  Served Site{{.Absence = 50ms, .Greeting = 50ms}};
  const std::string Cookie = Site.Cookie();
};

TEST(WebPumpTest, SaysWhenThereIsRoomAgainForOneThatWasToWait) {
  int iRooms = 0;
  WebPump oPump([&] { ++iRooms; });
  oPump.Handler([](const std::string&, bool) {});
  std::size_t iTaken = 0;
  while (oPump.Arrive("message")) ++iTaken;
  EXPECT_EQ(iTaken, WebPump::MostMessages - 1);
  oPump.Turn();
  oPump.Turn();
  EXPECT_EQ(iRooms, 1);
  oPump.Poll();
  EXPECT_FALSE(oPump.Arrive(std::string(WebPump::MostBytes, 'x')));
  while (iRooms == 1) oPump.Turn();
}

TEST(WebPumpTest, EscapeEndsWorkThatCanBeEndedAndWhatWasDoneMeanwhileIsLost) {
  std::vector<std::string> taken;
  std::vector<std::string> lost;
  WebPump oPump([] {});
  oPump.Handler([&](const std::string& s, bool bDuringWork) { (bDuringWork ? lost : taken).push_back(s); });
  std::promise<void> oEnd;
  const std::string sEscape = "[\"agent\",0]\n[\"key\",7,27]";
  std::thread oServer;
  const auto Work = [&] {
    oServer = std::thread([&] {
      oPump.Arrive("before");
      auto oEnded = oEnd.get_future();
      while (oEnded.wait_for(5ms) != std::future_status::ready) oPump.Arrive(sEscape);
    });
    oServer.join();
  };
  oPump.RunInBackground(Work, [&] { oEnd.set_value(); });
  oPump.Arrive("behind");
  oPump.Poll();
  EXPECT_EQ(taken, std::vector<std::string>{"behind"});
  EXPECT_EQ(lost.front(), "before");
  EXPECT_EQ(lost.back(), sEscape);
}

// Nobody is left waiting, whatever is said where.
TEST_F(HostileShellTest, WhatIsNoMessageEndsTheSessionAndIsTraced) {
  std::string sDeep = "[\"agent\",0]\n[\"load\",1";
  for (int i = 1; i < 5000; ++i) sDeep += ",1,\"a\"," + std::to_string(i);
  for (const std::string& sBad :
       {std::string("[\"nonsense\",0]"), std::string(), std::string("[\"theme\",\"pink\"]"),
        std::string("[\"item\",\"99999999999\"]"), std::string("[\"agent\",0]\n[\"click\",1,"),
        std::string("[\"agent\",0]\n[\"key\",99999999999,1]"), std::string("\xff\0\n", 3)}) {
    const auto oShell = Begin();
    oShell->Say(sBad);
    EXPECT_TRUE(oShell->IsClosed()) << sBad;
    Site.AwaitSessions(0);
    oShell->Disconnect();
  }
  const auto oDeep = std::make_shared<PlayedShell>(Site);
  oDeep->Connect(Cookie);
  oDeep->Say(sDeep + "]");
  EXPECT_TRUE(oDeep->IsClosed());
  oDeep->Disconnect();
  EXPECT_NE(Site.Traced().find("nested too deeply"), std::string::npos);
  EXPECT_NE(Site.Traced().find("There is no message \"nonsense\""), std::string::npos);
}

TEST_F(HostileShellTest, AskingWithoutEndAndAnsweringNothingUsesUpNoStack) {
  for (const char* sAsk : {R"(["show","Parameters"])", R"(["item","2"])"}) {
    const auto oShell = Begin();
    for (int i = 0; i < 2000; ++i) oShell->Say(sAsk);
    oShell->Say(R"(["show","InfoActivity"])");
    oShell->Disconnect();
    Site.AwaitSessions(0);
  }
  Begin()->Disconnect();
}

TEST_F(HostileShellTest, AfterSigningOutNothingMoreIsTaken) {
  const auto oSilent = std::make_shared<PlayedShell>(Site);
  const auto oShell = Begin();
  oSilent->Open(Cookie);
  Site.Ask("POST", "/logout", Cookie);
  EXPECT_TRUE(oShell->IsClosed());
  oSilent->Greet();
  EXPECT_TRUE(oSilent->IsClosed());
  Site.AwaitSessions(0);
  oShell->Disconnect();
  oSilent->Disconnect();
}

TEST(StuckSessionTest, CountsUntilItsThreadHasEnded) {
  std::promise<void> oEnd;
  Served Site{{.Most = 1, .Program = [&](WebPlatform&) { oEnd.get_future().wait(); }}};
  const std::string sCookie = Site.Cookie();
  const auto oStuck = std::make_shared<PlayedShell>(Site);
  const auto oNext = std::make_shared<PlayedShell>(Site);
  oStuck->Connect(sCookie);
  Site.Ask("POST", "/logout", sCookie);
  oNext->Connect(Site.Cookie());
  EXPECT_EQ(oNext->Await(R"(["full")"), R"(["full",1])");
  EXPECT_TRUE(oNext->IsClosed());
  oEnd.set_value();
  Site.AwaitSessions(0);
  oStuck->Disconnect();
  oNext->Disconnect();
}

TEST_F(HostileShellTest, OnlyTheLastSocketOfAShellIsHeard) {
  const auto oFirst = Begin();
  const auto oSecond = oFirst->ComeBack(Cookie);
  EXPECT_TRUE(oFirst->IsClosed());
  oFirst->Say(R"(["show","Parameters"])");
  oSecond->Say(R"(["show","InfoActivity"])");
  EXPECT_TRUE(oSecond->Await(R"(["page")").starts_with(R"(["page","InfoActivity")"));
  oFirst->Disconnect();
  oSecond->Disconnect();

  const auto oSilent = std::make_shared<PlayedShell>(Site);
  oSilent->Open(Cookie);
  EXPECT_TRUE(oSilent->IsClosed());  // after a while
  oSilent->Disconnect();
}

/// Messages made of the right words and wrong ones.
class Garbage {
 public:
  explicit Garbage(unsigned iSeed) : m_oEngine(iSeed) {}

  std::string Message() {
    static const std::vector<std::string> Kinds = {"item", "show",   "refresh",  "theme",  "pressed", "entered",
                                                   "help", "agent",  "agent",    "agent",  "agent",   "ack",
                                                   "live", "failed", "notagain", "closed", "got",     "hello"};
    static const std::vector<std::string> Said = {"begin", "load",        "load",       "click",  "key",   "focus",
                                                  "keys",  "frame-begin", "frame-load", "export", "click", "key"};
    std::string sKind = One(Kinds);
    std::string s = "[\"" + sKind + "\"";
    // Mostly what this kind takes, so that something comes of it.
    if (sKind == "item") s += ",\"" + Number() + "\"";
    if (sKind == "show") s += "," + Page();
    if (sKind == "theme") s += Pick(2) == 0 ? ",\"dark\"" : ",\"\"";
    if (sKind == "pressed") s += "," + Number() + ",0";
    if (sKind == "entered") s += "," + Number() + ",0," + Text();
    if (sKind == "refresh" || sKind == "help") s += "," + Number();
    if (sKind == "ack") s += "," + Frame() + "," + Number() + "," + Number() + "," + Text();
    if (sKind == "failed" || sKind == "notagain") s += "," + Frame() + "," + Number();
    if (sKind == "agent" || sKind == "live") s += "," + Frame();
    if (sKind == "agent") {
      const std::string sWhat = One(Said);
      s += "]\n[\"" + sWhat + "\"," + Number();
      if (sWhat == "load") {
        s += ",1,\"html\",1,1,\"body\",2";
        for (int i = Pick(8); i > 0; --i)
          s += ",1,\"td\"," + std::to_string(11 - i) + ",2,\"id\"," + Text() + ",3," + Text() + ",4";
        s += ",4,4";
      } else {
        s += "," + Number();
      }
    }
    while (Pick(8) == 0) s += "," + (Pick(2) == 0 ? Number() : Text());
    s += "]";
    while (Pick(12) == 0) s[static_cast<std::size_t>(Pick(static_cast<int>(s.size())))] = static_cast<char>(Pick(256));
    return Pick(30) == 0 ? s.substr(0, static_cast<std::size_t>(Pick(static_cast<int>(s.size())))) : s;
  }

 private:
  int Pick(int iBelow) { return std::uniform_int_distribution(0, iBelow - 1)(m_oEngine); }
  std::string One(const std::vector<std::string>& from) {
    return from[static_cast<std::size_t>(Pick(static_cast<int>(from.size())))];
  }
  std::string Frame() { return One({"0", "0", "1", "3", "4", "5", "4294967295"}); }
  std::string Number() {
    return Pick(12) == 0 ? One({"4294967295", "2147483648", "99999999999999999999", "-1", "1e9", "0"})
                         : std::to_string(Pick(40));
  }
  std::string Text() {
    return One({R"("")", R"("\u0000")", R"("\ud800")", "\"\xff\xc0\x80\"", R"("a")", R"("btnClose")",
                "\"" + std::string(3000, 'x') + "\""});
  }
  std::string Page() {
    return One({R"("Main")", R"("Parameters")", R"("Sessions")", R"("SysInfo")", R"("")", R"("../x")"});
  }

  std::mt19937 m_oEngine;
};

TEST_F(HostileShellTest, GarbageHarmsNobodyElse) {
  Garbage oGarbage(15);
  const auto oNeighbour = Begin();
  for (int i = 0; i < 60; ++i) {
    const auto oShell = i % 2 == 0 ? Begin() : std::make_shared<PlayedShell>(Site);
    if (i % 2 != 0) oShell->Connect(Cookie);
    for (int j = 0; j < 60; ++j) oShell->Say(oGarbage.Message());
    oShell->Disconnect();
  }
  Site.AwaitSessions(1);
  oNeighbour->Say(R"(["show","InfoActivity"])");
  EXPECT_TRUE(oNeighbour->Await(R"(["page")").starts_with(R"(["page","InfoActivity")"));
  oNeighbour->Disconnect();
}

}  // namespace
}  // namespace ZELWbr3::Web
