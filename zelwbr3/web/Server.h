#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/web/HTTP.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3::Web {

/// What a server bears at most.
struct Limits {
  std::size_t Connections = 512;
  std::size_t ConnectionsOfAddress = 64;       ///< without the WebSockets that are open
  std::size_t Message = std::size_t{1} << 20;  ///< bytes of a WebSocket message
  std::size_t Queued = std::size_t{32} << 20;  ///< bytes that wait for a WebSocket's peer to take them
  int MessagesPerSecond = 200;                 ///< of a socket; further ones wait
  std::chrono::milliseconds Head{10000};       ///< for a request to arrive
  std::chrono::milliseconds Idle{60000};       ///< between two requests
  std::chrono::milliseconds Write{30000};      ///< for the peer to take something, or to say that it is there
};

/// A server for HTTP/1.1 and WebSockets, with TLS or without. One thread, the one
/// that calls Run, does all of it.
class ZELWBR3_EXPORT Server {
 public:
  struct Options {
    std::string Address = "127.0.0.1";  ///< a numeric address, IPv4 or IPv6
    std::uint16_t Port = 0;             ///< 0 = a free one
    std::string CertificateFile = {};   ///< PEM, with its chain; empty = no TLS
    std::string KeyFile = {};
    Web::Limits Limits = {};
  };

  /// Listens from now on. oSite outlives the server. Throws std::runtime_error
  /// that names the address or file.
  Server(const Options& oOptions, Site& oSite);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  std::uint16_t Port() const;
  /// Serves until Stop, or one of the signals SIGINT and SIGTERM, which call
  /// oStopping first.
  void Run(std::function<void()> oStopping);
  /// Takes no new connections, says good-bye on the WebSockets and lets Run
  /// return. From any thread.
  void Stop();
  /// Runs something on the server's thread. From any thread.
  void Post(std::function<void()> oTask);
  /// The same after a time.
  void After(std::chrono::milliseconds oTime, std::function<void()> oTask);

 private:
  struct State;
  std::shared_ptr<State> m_oState;
};

}  // namespace ZELWbr3::Web
