#include "tests/web/Served.h"

#include <gtest/gtest.h>

#include <vector>

namespace ZELWbr3::Web {
namespace {

using namespace std::chrono_literals;

class AttackTest : public testing::Test {
 protected:
  explicit AttackTest(const std::function<void(WebPlatform&)>& oProgram = {}, const Limits& oBounds = Tight())
      : Site({.Absence = 200ms, .Bounds = oBounds, .Program = oProgram}) {}

  static Limits Tight() {
    return {.ConnectionsOfAddress = 300, .Message = 4096, .Head = 500ms, .Idle = 500ms, .Write = 500ms};
  }
  /// A request in HTTP/1.1 that ends its connection.
  std::string Ask(const std::string& sTarget, const std::string& sHeaders = {}, const std::string& sHost = {}) {
    return Begin("GET " + sTarget + " HTTP/1.1\r\nHost: " + (sHost.empty() ? Site.Host() : sHost) + "\r\n" + sHeaders +
                 "Connection: close\r\n\r\n")
        .second;
  }
  /// Sends a request and takes what begins the answer. The server waits for a request only
  /// for a moment here: on a busy machine it may come too late, which shows nothing.
  std::pair<std::unique_ptr<RawPeer>, std::string> Begin(const std::string& sRequest) {
    for (int i = 0;; ++i) {
      auto oPeer = std::make_unique<RawPeer>(Site.Port());
      oPeer->Send(sRequest);
      const bool bUpgrade = sRequest.find("Upgrade: ") != std::string::npos;
      const std::string sAnswer = oPeer->Receive(bUpgrade ? "\r\n\r\n" : "");
      if (sAnswer.size() > 12) return {std::move(oPeer), sAnswer};
      if (i == 50) throw std::runtime_error("The server does not answer " + sRequest);
    }
  }
  /// A WebSocket whose session has said its first word. It may have to say its own in
  /// time, too.
  std::unique_ptr<RawPeer> Greeted(const std::string& sGreeting) {
    const std::string sUpgrade = Upgrade(Cookie() + "Origin: " + Site.Origin() + "\r\n");
    for (int i = 0; i < 50; ++i) {
      auto oPeer = Begin(sUpgrade).first;
      oPeer->Send(sGreeting);
      if (oPeer->Receive("welcome").find("welcome") != std::string::npos) return oPeer;
    }
    throw std::runtime_error("The session does not begin with " + sGreeting);
  }
  static std::string Status(const std::string& sAnswer) { return sAnswer.substr(9, 3); }
  std::string Cookie() {
    const std::string sAnswer = Ask("/?token=the-right-token");
    const auto iCookie = sAnswer.find("zelweb-");
    return "Cookie: " + sAnswer.substr(iCookie, sAnswer.find(';', iCookie) - iCookie) + "\r\n";
  }
  std::string Upgrade(const std::string& sHeaders) {
    return "GET /socket HTTP/1.1\r\nHost: " + Site.Host() + "\r\n" + sHeaders +
           "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
           "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n";
  }
  /// A masked frame, with a mask of zeros.
  static std::string Frame(const std::string& sText, unsigned char cKind = 0x81) {
    std::string sFrame{static_cast<char>(cKind)};
    if (sText.size() < 126) {
      sFrame += static_cast<char>(0x80 | sText.size());
    } else {
      sFrame += {static_cast<char>(0x80 | 126), static_cast<char>(sText.size() >> 8), static_cast<char>(sText.size())};
    }
    return sFrame + std::string(4, '\0') + sText;
  }
  /// Nothing before it has done harm.
  void ExpectAlive() { EXPECT_EQ(Status(Ask("/?token=the-right-token")), "200"); }

  Served Site;
};

TEST_F(AttackTest, NothingIsAnsweredToStrangers) {
  for (const char* sTarget :
       {"/", "/p/x/Main.htm", "/shell/x/shell.js", "/lights", "/instance/0", "/../../etc/passwd", "/logout"}) {
    EXPECT_EQ(Status(Ask(sTarget)), "401") << sTarget;
    EXPECT_EQ(Status(Ask(sTarget, Cookie(), "evil.example")), "421") << sTarget;
    EXPECT_EQ(Status(Ask(sTarget, Cookie() + "Origin: http://evil.example\r\n")), "403") << sTarget;
    EXPECT_EQ(Status(Ask(sTarget, "Cookie: zelweb-" + std::to_string(Site.Port()) + "=guessed\r\n")), "401") << sTarget;
  }
  EXPECT_EQ(Status(Ask("/metrics", Cookie())), "401");
  EXPECT_EQ(Status(Ask("/metrics", "Authorization: Bearer the-right-token\r\n")), "401");
  EXPECT_EQ(Status(Ask("/metrics", "Authorization: Bearer the-metrics-token\r\n")), "200");
  const std::string sPath = Ask("/", Cookie());
  EXPECT_EQ(Status(sPath), "200");
  EXPECT_NE(sPath.find("frame-ancestors 'none'"), std::string::npos);
  EXPECT_EQ(Status(Ask("/p/%2e%2e/%2e%2e/etc/passwd", Cookie())), "404");

  const std::string sOurs = "Origin: " + Site.Origin() + "\r\n";
  for (const std::string& sHeaders : {std::string(), sOurs, Cookie(), Cookie() + "Origin: http://evil.example\r\n"}) {
    EXPECT_NE(Status(Begin(Upgrade(sHeaders)).second), "101") << sHeaders;
  }
}

TEST_F(AttackTest, BrokenRequestsAndFramesEndTheirConnectionOnly) {
  for (const std::string& sBytes :
       {std::string("\0\1\2\3\r\n\r\n", 8), std::string("GET\r\n\r\n"), std::string(20000, 'A'),
        "GET / HTTP/1.1\r\nHost: " + std::string(9000, 'h') + "\r\n\r\n",
        "POST /logout HTTP/1.1\r\nHost: " + Site.Host() + "\r\nContent-Length: 99999\r\n\r\n"}) {
    RawPeer oPeer(Site.Port());
    oPeer.Send(sBytes);
    oPeer.Receive();
  }
  const std::string sGreeting = R"(["hello",0,"","load",0,0,0,""])";
  for (const std::string& sBytes :
       {Frame("no list"), Frame(R"(["hello",7,"","x",0,0,0,""])"), Frame(R"(["agent",0])"), Frame("", 0x88),
        Frame("x", 0x85), std::string("\x81\xff\x7f\xff\xff\xff\xff\xff\xff\xff", 10), Frame(std::string(5000, 'x')),
        Frame(sGreeting) + Frame("[\"agent\",0]\n[\"load\",1,9,9]"), Frame(sGreeting) + Frame("[\"pressed\",1]"),
        Frame(sGreeting) + Frame("[\"nonsense\",0]"), Frame(sGreeting) + Frame("\xff\xfe"), Frame(sGreeting, 0x82),
        std::string("\x81\x01x"), Frame(sGreeting, 0x80), Frame(std::string(200, 'x'), 0x89)}) {
    const auto [oPeer, sAnswer] = Begin(Upgrade(Cookie() + "Origin: " + Site.Origin() + "\r\n"));
    EXPECT_EQ(Status(sAnswer), "101");
    oPeer->Send(sBytes);
    oPeer->Receive();  // ends: nobody is left waiting
  }
  Greeted(Frame(sGreeting.substr(0, 9), 0x01) + Frame("ping", 0x89) + Frame(sGreeting.substr(9), 0x80));
}

/// A session that has more to say than goes into a socket.
class TalkativeTest : public AttackTest {
 protected:
  explicit TalkativeTest(const Limits& oBounds = Tight())
      : AttackTest(
            [this](WebPlatform& o) {
              for (int i = 0; i < 200; ++i) o.Send("text", std::string(100'000, 'x'));
              m_oSaid.set_value();
              o.Run();
            },
            oBounds) {}
  void ExpectCutOff() {
    const auto oPeer = Greeted(Frame(R"(["hello",0,"","load",0,0,0,""])"));
    m_oSaid.get_future().wait();
    Site.AwaitSessions(0);
  }

 private:
  std::promise<void> m_oSaid;
};
class BoundedTalkativeTest : public TalkativeTest {
 protected:
  // Long before its time is up.
  BoundedTalkativeTest() : TalkativeTest({.Queued = 1U << 20}) {}
};

TEST_F(TalkativeTest, WhoReadsNothingIsCutOff) { ExpectCutOff(); }
TEST_F(BoundedTalkativeTest, WhoReadsNothingIsCutOff) { ExpectCutOff(); }

class CrowdedTest : public AttackTest {
 protected:
  CrowdedTest() : AttackTest({}, {.ConnectionsOfAddress = 2}) {}
};

TEST_F(CrowdedTest, AnAddressHasFewConnectionsBesidesItsWebSockets) {
  const std::string sUpgrade = Upgrade(Cookie() + "Origin: " + Site.Origin() + "\r\n");
  std::vector<std::unique_ptr<RawPeer>> sockets;
  for (int i = 0; i < 5; ++i) sockets.push_back(Begin(sUpgrade).first);
  ExpectAlive();
  RawPeer oOne(Site.Port());
  RawPeer oOther(Site.Port());
  EXPECT_EQ(RawPeer(Site.Port()).Receive(), "");
}

TEST_F(AttackTest, WhoSaysNothingIsNotWaitedFor) {
  std::vector<std::unique_ptr<RawPeer>> peers;
  for (int i = 0; i < 200; ++i) {
    peers.push_back(std::make_unique<RawPeer>(Site.Port()));
    peers.back()->Send("GET / HTTP/1.1\r\nHost: ");
  }
  ExpectAlive();
  for (const auto& oPeer : peers) EXPECT_EQ(oPeer->Receive().find("200 OK"), std::string::npos);
  ExpectAlive();
}

}  // namespace
}  // namespace ZELWbr3::Web
