#pragma once

#include "tests/web/Served.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <atomic>
#include <condition_variable>
#include <deque>

namespace ZELWbr3::Web {

/// A shell without a browser: it answers what a shell must answer, and knows what
/// the server has sent.
class PlayedShell : public Socket, public std::enable_shared_from_this<PlayedShell> {
 public:
  explicit PlayedShell(Served& oSite, std::string sLoad = "load", int iInstance = 0)
      : m_oSite(oSite), m_sLoad(std::move(sLoad)), m_sInstance(std::to_string(iInstance)) {}

  void Connect(const std::string& sCookie, const std::string& sSession = {}, std::uint32_t iGot = 0,
               bool bGreeted = false) {
    const std::string sHello = Hello(sSession, iGot, bGreeted);
    m_oSite.Do([&] {
      OpenNow(sCookie);
      m_oOwner->Text(sHello);
    });
  }
  /// Opens its socket and says nothing.
  void Open(const std::string& sCookie) {
    m_oSite.Do([&] { OpenNow(sCookie); });
  }
  void Greet() { Say(Hello()); }
  /// The same load over another socket, while this one still seems to be there; what
  /// it has not taken yet is lost.
  std::shared_ptr<PlayedShell> ComeBack(const std::string& sCookie) {
    const auto oAgain = std::make_shared<PlayedShell>(m_oSite, m_sLoad);
    oAgain->Got = Got;
    oAgain->Batches = std::move(Batches);
    oAgain->Connect(sCookie, m_sSession, Got, true);
    return oAgain;
  }
  void Disconnect() {
    m_oSite.Do([&] {
      if (m_oOwner != nullptr) std::exchange(m_oOwner, nullptr)->Gone();
    });
  }
  void Say(std::string sText) {
    m_oSite.Do([&] {
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
        if (!m_oArrived.wait_for(oLock, std::chrono::seconds(60), [&] { return !m_messages.empty(); }))
          return "nothing came";
        sText = std::move(m_messages.front());
        m_messages.pop_front();
      }
      if (!sText.starts_with(R"(["welcome")")) TakeNoteOf(sText);
      Answer(sText);
      if (sText.starts_with(sBegin)) return sText;
    }
  }
  std::string Session() const { return m_sSession; }
  bool IsClosed() {
    std::unique_lock oLock(m_oMutex);
    return m_oArrived.wait_for(oLock, std::chrono::seconds(60), [&] { return m_bClosed; });
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
  void Resume() override { ++Resumed; }

  /// Batches are not acknowledged until Acknowledge.
  void Hold() { m_bHolds = true; }
  void Acknowledge() {
    m_bHolds = false;
    for (const std::string& sHead : std::exchange(m_held, {})) Answer(sHead);
  }

  std::atomic<int> Resumed = 0;
  /// All batches, one after the other.
  std::string Batches;
  /// Messages taken that count.
  std::uint32_t Got = 0;

 private:
  std::string Hello(const std::string& sSession = {}, std::uint32_t iGot = 0, bool bGreeted = false) const {
    return "[\"hello\"," + m_sInstance + ",\"" + sSession + R"(",")" + m_sLoad + "\"," + std::to_string(iGot) +
           (bGreeted ? ",1" : ",0") + R"(,0,""])";
  }
  void OpenNow(const std::string& sCookie) {
    const std::string sName = "zelweb-" + std::to_string(m_oSite.Port());
    m_oOwner = m_oSite.TheSessions().Opened({.Cookie = sName + "=" + sCookie}, shared_from_this());
  }
  void TakeNoteOf(const std::string& sText) {
    m_iBytes += sText.size();
    if (++Got % 32 == 0 || m_iBytes > (1U << 20)) {
      m_iBytes = 0;
      Say("[\"got\"," + std::to_string(Got) + "]");
    }
    if (sText.starts_with(R"(["batch")")) Batches += sText.substr(sText.find('\n'));
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
    } else if (sKind == "batch" && m_bHolds) {
      m_held.push_back(sText.substr(0, sText.find('\n')));
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
  std::string m_sInstance;
  std::string m_sSession;
  std::shared_ptr<SocketOwner> m_oOwner;
  std::mutex m_oMutex;
  std::condition_variable m_oArrived;
  std::deque<std::string> m_messages;
  bool m_bClosed = false;
  bool m_bHolds = false;
  std::vector<std::string> m_held;
  std::size_t m_iBytes = 0;
};

}  // namespace ZELWbr3::Web
