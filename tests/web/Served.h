#pragma once

#include "host/OpenInstance.h"
#include "host/WebPages.h"
#include "zelwbr3/web/Server.h"
#include "zelwbr3/web/Sessions.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace ZELWbr3::Web {

/// A site that shows the demo recording, served on a thread of its own.
class Served {
 public:
  explicit Served(std::chrono::milliseconds oAbsence = std::chrono::seconds(60), Limits oLimits = {})
      : m_oFiles({ZELWBR3_SOURCE_DIR "/html"}), m_oSessions(Options(oAbsence), Keeper, m_oFiles) {
    m_oServer = std::make_unique<Server>(Server::Options{.Limits = oLimits}, m_oSessions);
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

  Doorkeeper Keeper{{.Token = "the-right-token", .MetricsToken = "the-metrics-token"}};

 private:
  static Sessions::Options Options(std::chrono::milliseconds oAbsence) {
    Sessions::Options o;
    o.Instances = {"Demo"};
    o.Absence = oAbsence;
    o.Program = [](WebPlatform& oPlatform, std::size_t) {
      Host::WebPages(oPlatform, Host::OpenInstance("recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json",
                                                   Host::RefuseChanges))
          .Run("Main");
    };
    o.Figures = [](const std::string&) { return Response{200}; };
    return o;
  }

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
