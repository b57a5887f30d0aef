#include "tests/web/Served.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>

namespace ZELWbr3::Web {
namespace {

using namespace std::chrono_literals;

/// A shell without a browser: it answers what a shell must answer, and knows what
/// the server has sent.
class PlayedShell : public Socket, public std::enable_shared_from_this<PlayedShell> {
 public:
  explicit PlayedShell(Served& oSite, std::string sLoad = "load") : m_oSite(oSite), m_sLoad(std::move(sLoad)) {}

  void Connect(const std::string& sCookie, const std::string& sSession = {}, std::uint32_t iGot = 0,
               bool bGreeted = false) {
    const std::string sName = "zelweb-" + std::to_string(m_oSite.Port());
    OnServer([&] {
      m_oOwner = m_oSite.TheSessions().Opened({.Cookie = sName + "=" + sCookie}, shared_from_this());
      m_oOwner->Text(R"(["hello",0,")" + sSession + R"(",")" + m_sLoad + "\"," + std::to_string(iGot) +
                     (bGreeted ? ",1" : ",0") + R"(,0,""])");
    });
  }
  void Disconnect() {
    OnServer([&] { std::exchange(m_oOwner, nullptr)->Gone(); });
  }
  void Say(std::string sText) {
    OnServer([&] {
      if (m_oOwner != nullptr) m_oOwner->Text(std::move(sText));
    });
  }

  /// Waits for a message that begins so, takes it and those before it, and answers
  /// them as a shell does.
  std::string Await(const std::string& sBegin) {
    for (;;) {
      std::string sText;
      {
        std::unique_lock oLock(m_oMutex);
        if (!m_oArrived.wait_for(oLock, 60s, [&] { return !m_messages.empty(); })) return "nothing came";
        sText = std::move(m_messages.front());
        m_messages.pop_front();
      }
      if (!sText.starts_with(R"(["welcome")")) ++Got;
      Answer(sText);
      if (sText.starts_with(sBegin)) return sText;
    }
  }
  std::string Session() const { return m_sSession; }
  bool IsClosed() {
    std::unique_lock oLock(m_oMutex);
    return m_oArrived.wait_for(oLock, 60s, [&] { return m_bClosed; });
  }

  void Send(std::shared_ptr<const std::string> sText) override {
    const std::scoped_lock oLock(m_oMutex);
    m_messages.push_back(*sText);
    m_oArrived.notify_all();
  }
  void Close(int) override {
    const std::scoped_lock oLock(m_oMutex);
    m_bClosed = true;
    m_oArrived.notify_all();
  }
  void Resume() override {}

  /// Messages taken that count.
  std::uint32_t Got = 0;

 private:
  void OnServer(const std::function<void()>& oTask) {
    std::promise<void> oDone;
    m_oSite.TheServer().Post([&] {
      oTask();
      oDone.set_value();
    });
    oDone.get_future().wait();
  }

  void Answer(const std::string& sText) {
    FlatListReader oList(std::string_view(sText).substr(0, sText.find('\n')));
    const std::string sKind = oList.Text();
    if (sKind == "welcome") {
      m_sSession = oList.Text();
    } else if (sKind == "go") {
      const std::uint32_t iFrame = oList.Number();
      const std::uint32_t iSerial = oList.Number();
      const std::string sURL = oList.Text();
      const auto iName = sURL.rfind('/') + 1;
      const auto oDocument =
          Headless::LoadPageFile(ZELWBR3_SOURCE_DIR "/html/" + sURL.substr(iName, sURL.find('?') - iName));
      FlatListWriter oLoad;
      oLoad.Add("load");
      oLoad.Add(iSerial);
      Describe(*oDocument->documentElement(), oLoad);
      const std::string sFrame = "[\"agent\"," + std::to_string(iFrame) + "]\n";
      Say(sFrame + "[\"begin\"," + std::to_string(iSerial) + "]");
      Say(sFrame + oLoad.Take());
    } else if (sKind == "batch") {
      const std::string sFrame = std::to_string(oList.Number());
      const std::string sSerial = std::to_string(oList.Number());
      Say("[\"ack\"," + sFrame + "," + sSerial + "," + std::to_string(oList.Number()) + ",\"\"]");
    }
  }
  static void Describe(const Element& o, FlatListWriter& oList) {
    oList.Add(1U);
    oList.Add(o.tagName());
    oList.Add(o.Number());
    for (const auto& [sName, sValue] : o.attributes()) {
      oList.Add(2U);
      oList.Add(sName);
      oList.Add(sValue);
    }
    const auto AddText = [&](const std::string& s) {
      if (s.empty()) return;
      oList.Add(3U);
      oList.Add(s);
    };
    AddText(o.text());
    o.ForEachChild([&](const Element& oChild) {
      Describe(oChild, oList);
      AddText(oChild.tail());
    });
    oList.Add(4U);
  }

  Served& m_oSite;
  std::string m_sLoad;
  std::string m_sSession;
  std::shared_ptr<SocketOwner> m_oOwner;
  std::mutex m_oMutex;
  std::condition_variable m_oArrived;
  std::deque<std::string> m_messages;
  bool m_bClosed = false;
};

class SessionsTest : public testing::Test {
 protected:
  explicit SessionsTest(std::chrono::milliseconds oAbsence = 60s) : Site(oAbsence) {}

  /// A cookie as a browser gets it.
  std::string Cookie() {
    std::promise<std::string> oSet;
    Site.TheServer().Post([&] { oSet.set_value(Site.Keeper.Enter({.Target = "/?token=the-right-token"}).SetCookie); });
    const std::string sSet = oSet.get_future().get();
    const auto iValue = sSet.find('=') + 1;
    return sSet.substr(iValue, sSet.find(';') - iValue);
  }
  const std::string Main = R"(["page","Main",)";
  const std::string Activity = R"(["page","InfoActivity",)";

  Served Site;
};

TEST_F(SessionsTest, TwentyAtATimeShowTheirPages) {
  const std::string sCookie = Cookie();
  std::vector<std::thread> threads;
  for (int i = 0; i < 20; ++i) {
    threads.emplace_back([&, i] {
      const auto oShell = std::make_shared<PlayedShell>(Site, "load" + std::to_string(i));
      oShell->Connect(sCookie);
      EXPECT_TRUE(oShell->Await(Main).find("DEMO - Overview") != std::string::npos);
      for (int j = 0; j < 3; ++j) {
        oShell->Say(R"(["show","InfoActivity"])");
        EXPECT_EQ(oShell->Await(Activity).substr(0, Activity.size()), Activity);
        oShell->Say("[\"agent\",1]\n[\"key\",2,27]");  // of a document that is gone: ignored
        oShell->Say(R"(["show","Main"])");
        EXPECT_EQ(oShell->Await(Main).substr(0, Main.size()), Main);
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
  std::promise<bool> oEnded;
  const std::function<void()> Look = [&] {
    if (Site.TheSessions().Count() == 0) return oEnded.set_value(true);
    Site.TheServer().After(20ms, Look);
  };
  Site.TheServer().Post(Look);
  EXPECT_TRUE(oEnded.get_future().get());
  // Who shows an ended one has to begin anew.
  const auto oLate = std::make_shared<PlayedShell>(Site);
  oLate->Connect(sCookie, oShell->Session(), oShell->Got, true);
  EXPECT_TRUE(oLate->IsClosed());
  oLate->Disconnect();
}

}  // namespace
}  // namespace ZELWbr3::Web
