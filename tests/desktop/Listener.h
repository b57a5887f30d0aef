#pragma once

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <stdexcept>
#include <string>

namespace ZELWbr3::Desktop {

/// A server on the loopback that only notices connections.
class Listener {
 public:
  Listener() : m_iSocket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
    m_oAddress.sin_family = AF_INET;
    m_oAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t iSize = sizeof m_oAddress;
    auto* pAddress = reinterpret_cast<sockaddr*>(&m_oAddress);
    if (bind(m_iSocket, pAddress, iSize) != 0 || listen(m_iSocket, 5) != 0) throw std::runtime_error("No socket");
    getsockname(m_iSocket, pAddress, &iSize);
  }
  ~Listener() { close(m_iSocket); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  std::string URL() const { return "http://127.0.0.1:" + std::to_string(ntohs(m_oAddress.sin_port)) + "/"; }
  bool Visited() const {
    const int iVisitor = accept(m_iSocket, nullptr, nullptr);
    if (iVisitor >= 0) close(iVisitor);
    return iVisitor >= 0;
  }

  /// Waits for a visitor and answers with a page; false when none comes.
  bool Answer(const std::string& sHTML) const {
    pollfd oPoll{m_iSocket, POLLIN, 0};
    if (poll(&oPoll, 1, 20'000) != 1) return false;
    const int iVisitor = accept(m_iSocket, nullptr, nullptr);
    char request[4096];
    (void)!read(iVisitor, request, sizeof request);
    const std::string sAnswer = "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\nContent-Length: " +
                                std::to_string(sHTML.size()) + "\r\n\r\n" + sHTML;
    const bool bWritten = write(iVisitor, sAnswer.data(), sAnswer.size()) == static_cast<ssize_t>(sAnswer.size());
    close(iVisitor);
    return bWritten;
  }

 private:
  int m_iSocket;
  sockaddr_in m_oAddress{};
};

}  // namespace ZELWbr3::Desktop
