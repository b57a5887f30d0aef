#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ZELWbr3::Web {

/// A request as far as anything here asks for it. A header that is not there, or
/// is there twice, is empty.
struct Request {
  std::string Method = {};
  std::string Target = {};  ///< path and query
  std::string Host = {};
  std::string Origin = {};
  std::string Cookie = {};
  std::string Authorization = {};
  std::string FetchSite = {};  ///< Sec-Fetch-Site
  std::string AcceptEncoding = {};
  std::string Body = {};
  std::string Address = {};  ///< of the peer

  std::string Path() const { return Target.substr(0, Target.find('?')); }
};

struct Response {
  int Status = 200;
  std::vector<std::pair<std::string, std::string>> Headers = {};
  std::shared_ptr<const std::string> Body = {};
};

/// The server's end of a WebSocket. Every member may be called from any thread.
class Socket {
 public:
  virtual ~Socket() = default;

  /// Sends a text behind those sent before. Does nothing when the peer is gone.
  virtual void Send(std::shared_ptr<const std::string> sText) = 0;
  /// Ends it with a code of the protocol, such as 1001 for a server that goes away.
  virtual void Close(int iCode) = 0;
  /// Takes messages again after SocketOwner::Text has answered false.
  virtual void Resume() = 0;
};

/// What happens to a WebSocket, told on the server's thread.
class SocketOwner {
 public:
  virtual ~SocketOwner() = default;

  /// A message. False = no further ones until Socket::Resume.
  virtual bool Text(std::string sText) = 0;
  /// The socket is closed; nothing else comes.
  virtual void Gone() = 0;
};

/// What a Server serves; called on its thread.
class Site {
 public:
  virtual ~Site() = default;

  virtual Response Answer(const Request& oRequest) = 0;
  /// Why a WebSocket must not be opened; no value if it may.
  virtual std::optional<Response> Refusal(const Request& oRequest) = 0;
  /// A WebSocket is open.
  virtual std::shared_ptr<SocketOwner> Opened(const Request& oRequest, std::shared_ptr<Socket> oSocket) = 0;
};

}  // namespace ZELWbr3::Web
