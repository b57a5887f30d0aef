#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <stdexcept>
#include <string>

namespace ZELWbr3::Desktop {

/// A server on the loopback that only notices whether somebody comes.
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

 private:
  int m_iSocket;
  sockaddr_in m_oAddress{};
};

}  // namespace ZELWbr3::Desktop
