#pragma once

#include "host/OpenInstance.h"
#include "host/WebPages.h"
#include "zelwbr3/web/Server.h"
#include "zelwbr3/web/Sessions.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace ZELWbr3::Web {

/// A site, by default with the demo recording, served on a thread of its own.
class Served {
 public:
  struct What {
    std::chrono::milliseconds Absence = std::chrono::seconds(60);
    std::chrono::milliseconds Greeting = std::chrono::seconds(60);
    std::size_t Most = 64;
    Limits Bounds = {};
    std::vector<std::string> Instances = {"recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json"};
    /// Instead of the pages of the instances.
    std::function<void(WebPlatform&)> Program = {};
  };

  explicit Served(const What& oWhat)
      : m_oFiles({ZELWBR3_SOURCE_DIR "/html"}), m_oSessions(Options(oWhat), Keeper, m_oFiles) {
    m_oServer = std::make_unique<Server>(Server::Options{.Limits = oWhat.Bounds}, m_oSessions);
    m_oSessions.ServedBy(*m_oServer);
    Keeper.ServedAt({Origin()}, m_oServer->Port());
    m_oThread = std::thread([this] { m_oServer->Run([] {}); });
  }
  ~Served() {
    m_oServer->Post([this] { m_oSessions.End("The test is over"); });
    m_oServer->Stop();
    m_oThread.join();
    m_oSessions.Join(std::chrono::seconds(20));
  }

  std::string Host() const { return "127.0.0.1:" + std::to_string(m_oServer->Port()); }
  std::string Origin() const { return "http://" + Host(); }
  std::uint16_t Port() const { return m_oServer->Port(); }
  Server& TheServer() { return *m_oServer; }
  Sessions& TheSessions() { return m_oSessions; }
  /// On the server's thread, and waits for it.
  template <typename Task>
  auto Do(const Task& oTask) {
    const auto oDone = std::make_shared<std::packaged_task<decltype(oTask())()>>(oTask);
    m_oServer->Post([oDone] { (*oDone)(); });
    return oDone->get_future().get();
  }
  /// Waits until so many sessions are left.
  void AwaitSessions(std::size_t iCount) {
    const auto oUntil = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (Do([&] { return m_oSessions.Count(); }) != iCount) {
      if (std::chrono::steady_clock::now() > oUntil) throw std::runtime_error("The sessions do not end");
      const auto oLater = std::make_shared<std::promise<void>>();
      m_oServer->After(std::chrono::milliseconds(5), [oLater] { oLater->set_value(); });
      oLater->get_future().wait();
    }
  }
  /// A request of a page of ours.
  Response Ask(const std::string& sMethod, const std::string& sTarget, const std::string& sCookie) {
    const std::string sName = "zelweb-" + std::to_string(Port());
    return Do([&] {
      return m_oSessions.Answer(
          {.Method = sMethod, .Target = sTarget, .Host = Host(), .Origin = Origin(), .Cookie = sName + "=" + sCookie});
    });
  }
  /// A cookie as a browser gets it.
  std::string Cookie() {
    const std::string sSet = Do([&] { return Keeper.Enter({.Target = "/?token=the-right-token"}).SetCookie; });
    const auto iValue = sSet.find('=') + 1;
    return sSet.substr(iValue, sSet.find(';') - iValue);
  }
  std::string Traced() {
    const std::scoped_lock oLock(m_oMutex);
    return m_sTraced;
  }

  Doorkeeper Keeper{{.Token = "the-right-token", .MetricsToken = "the-metrics-token"}};

 private:
  Sessions::Options Options(const What& oWhat) {
    Sessions::Options o;
    o.Instances = oWhat.Instances;
    o.Most = oWhat.Most;
    o.Absence = oWhat.Absence;
    o.Greeting = oWhat.Greeting;
    o.Program = [oWhat](WebPlatform& oPlatform, std::size_t i) {
      if (oWhat.Program) return oWhat.Program(oPlatform);
      Host::WebPages(oPlatform, Host::OpenInstance(oWhat.Instances[i], Host::RefuseChanges)).Run("Main");
    };
    o.Trace = [this](const std::string& sText) {
      const std::scoped_lock oLock(m_oMutex);
      m_sTraced += sText + "\n";
    };
    o.Figures = [](const std::string&) { return Response{200}; };
    return o;
  }

  std::mutex m_oMutex;
  std::string m_sTraced;
  PageFiles m_oFiles;
  Sessions m_oSessions;
  std::unique_ptr<Server> m_oServer;
  std::thread m_oThread;
};

/// A peer that says what it likes. Nothing waits longer than some seconds.
class RawPeer {
 public:
  explicit RawPeer(std::uint16_t iPort) : m_iSocket(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in oAddress{};
    oAddress.sin_family = AF_INET;
    oAddress.sin_port = htons(iPort);
    oAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const timeval oPatience{20, 0};
    setsockopt(m_iSocket, SOL_SOCKET, SO_RCVTIMEO, &oPatience, sizeof oPatience);
    if (connect(m_iSocket, reinterpret_cast<sockaddr*>(&oAddress), sizeof oAddress) != 0) {
      throw std::runtime_error("The server cannot be reached");
    }
  }
  ~RawPeer() { close(m_iSocket); }
  RawPeer(const RawPeer&) = delete;
  RawPeer& operator=(const RawPeer&) = delete;

  void Send(const std::string& sBytes) { (void)!send(m_iSocket, sBytes.data(), sBytes.size(), MSG_NOSIGNAL); }
  /// Up to the end of the connection, or until it holds sUntil.
  std::string Receive(const std::string& sUntil = {}) {
    std::string sAll;
    char bytes[4096];
    while (sUntil.empty() || sAll.find(sUntil) == std::string::npos) {
      const auto iCount = recv(m_iSocket, bytes, sizeof bytes, 0);
      if (iCount <= 0) break;
      sAll.append(bytes, static_cast<std::size_t>(iCount));
    }
    return sAll;
  }

 private:
  int m_iSocket;
};

}  // namespace ZELWbr3::Web
